#pragma once
#include <functional>
#include <string>

#include "clients/directions.h"
#include "clients/notes_text.h"
#include "screens/FRMweb.h"
#include "screens/frmClient_part.h"
#include "screens/screen_steps.h"

namespace kv {

class MemoBox;
class PlainCombo;
class ToolBar;

/// The page of the way to the client, with the map's and the directions' pages on the web.
class FRMdirections : public ClientPart {
    Q_OBJECT
  public:
    FRMdirections(Session& session, QWidget* parent);
    std::vector<Tie> Ties() const override;

    ToolBar* Toolbar7 = nullptr;
    PlainCombo* CMBwhichMap = nullptr;
    MemoBox* TXTdirections = nullptr;

    /// The client on the screen as it stands there.
    std::function<PrintedClient()> Client;
    std::function<void(const Document&)> Preview;
    /// What an address answers; throws std::runtime_error.
    std::function<std::string(const std::string&)> Fetch;
    FRMweb::ViewMaker MakeView;

  private:
    PostalAddress ClientAddress() const;
    void Visit(WebVisit visit);
    void FindDirectionsKey();
    void FindMapKey();
    void PrintKey();
    void FetchPicture(const std::filesystem::path& file);

    Session& session_;
    KeySteps keys_;
};

}  // namespace kv
