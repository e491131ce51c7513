#pragma once
#include <QDialog>
#include <functional>

#include "matching/client_needs.h"

class QPushButton;

namespace kv {

class DateBox;
class NumberBox;
class PlainCombo;
class TimeBox;

/// "Find Available Caregivers": when and for how long somebody is looked for.
class FRMfindOpenEmployee : public QDialog {
    Q_OBJECT
  public:
    FRMfindOpenEmployee(Session& session, const std::string& client, QWidget* parent = nullptr);
    /// The authorization of the assignment that this was opened from, 0 for none.
    long OpenedFrom = 0;
    /// The caregiver chosen; empty for none.
    std::string Chosen;

    DateBox* DTEStart = nullptr;
    TimeBox* DTEtime = nullptr;
    NumberBox* NUMhours = nullptr;
    PlainCombo* CMBlivein = nullptr;
    QPushButton* CMDgo = nullptr;
    QPushButton* CMDexit = nullptr;

    /// Runs the search; the caregiver chosen, or the empty text.
    std::function<std::string(const SuggestionRequest&)> Search;

  private:
    void Go();

    Session& session_;
    std::string client_;
};

}  // namespace kv
