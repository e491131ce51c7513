#pragma once
#include <QWidget>
#include <array>
#include <string>

#include "clients/client_form.h"
#include "clients/client_texts.h"
#include "clients/screen_controls.h"
#include "session/session.h"

namespace kv {

/// One of the twelve section screens that fill the main screen's client area. It is made when its image is
/// pressed and goes when another one is.
class SectionScreen : public QWidget {
    Q_OBJECT
  public:
    using QWidget::QWidget;
    /// The client on the main screen (TXThiddenID), and the main screen, which outlives the section: told
    /// when the section opens and each time the record under it moves or changes. Throws EngineError.
    virtual void SetHiddenID(const std::string& id, ClientForm& mainScreen) = 0;
    /// Before the client or the section changes: false keeps the operator here, where something could not be
    /// saved.
    virtual bool MayLeave() { return true; }

  signals:
    /// The section wrote the client's row: the main screen shows it anew.
    void clientChanged();
};

/// A section behind IMGCommand: its picture, its word, and how its screen is made. One that nothing makes is
/// not shown.
struct Section {
    const char* icon = "";
    const char* word = "";
    SectionScreen* (*make)(Session& session, QWidget* parent) = nullptr;
};
using Sections = std::array<Section, kSectionCount>;

template <typename Screen>
SectionScreen* MakeSection(Session& session, QWidget* parent) {
    return new Screen(session, parent);
}

/// The sections in the order of IMGCommand; 0 is the main screen's own.
const Sections& ClientSectionScreens();

}  // namespace kv
