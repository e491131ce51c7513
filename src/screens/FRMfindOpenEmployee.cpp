#include "screens/FRMfindOpenEmployee.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "screens/FRMempsug.h"
#include "screens/screen_steps.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/date_box.h"
#include "screens/widgets/field_form.h"
#include "screens/widgets/number_box.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/time_box.h"

namespace kv {

FRMfindOpenEmployee::FRMfindOpenEmployee(Session& session, const std::string& client, QWidget* parent)
    : QDialog(parent), session_(session), client_(client) {
    setObjectName(QStringLiteral("FRMfindOpenEmployee"));
    setWindowTitle(QStringLiteral("Find Available Caregivers"));
    Search = [this](const SuggestionRequest& request) {
        FRMempsug screen(session_, request, this);
        if (screen.IsUsable()) {
            screen.exec();
        }
        return screen.Chosen();
    };
    auto* form = new FieldForm(this);
    DTEStart = new DateBox(QStringLiteral("DTEStart"), QStringLiteral("&Date of Visit:"), form);
    DTEtime = new TimeBox(QStringLiteral("DTEtime"), QStringLiteral("&Start Time:"), form);
    NUMhours =
        new NumberBox(QStringLiteral("NUMhours"), QStringLiteral("&Number of Hours:"), "#0.00", 7, form);
    NUMhours->SetLimits(0, 24);
    CMBlivein = new PlainCombo(QStringLiteral("CMBlivein"), QStringLiteral("&Live in:"),
                               PlainCombo::Style::List, 3, form);
    CMBlivein->SetItems(QStringList{QStringLiteral("Y"), QStringLiteral("N")});
    CMBlivein->SetText(QStringLiteral("N"));
    DTEStart->SetRequired(true);
    for (BoundControl* box : std::initializer_list<BoundControl*>{DTEStart, DTEtime, NUMhours, CMBlivein}) {
        form->AddField(*box);
    }
    DTEStart->SetDate(session.clock.Today());
    auto* note = new QLabel(QStringLiteral("Leave Time blank and hours at 0 to search full day"), this);
    note->setForegroundRole(QPalette::PlaceholderText);
    CMDgo = new QPushButton(tr("&Go"), this);
    CMDgo->setObjectName(QStringLiteral("CMDgo"));
    CMDgo->setDefault(true);
    CMDexit = new QPushButton(QStringLiteral("E&xit"), this);
    CMDexit->setObjectName(QStringLiteral("CMDexit"));
    auto* keys = new QHBoxLayout;
    keys->addStretch(1);
    keys->addWidget(CMDgo);
    keys->addWidget(CMDexit);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2 * theme::kUnit, 2 * theme::kUnit, 2 * theme::kUnit, 2 * theme::kUnit);
    layout->addWidget(form);
    layout->addWidget(note);
    layout->addStretch(1);
    layout->addLayout(keys);
    connect(CMDgo, &QPushButton::clicked, this, [this] { Reported(session_, [this] { Go(); }); });
    connect(CMDexit, &QPushButton::clicked, this, &QDialog::reject);
}

void FRMfindOpenEmployee::Go() {
    for (BoundControl* box : BoundControlsOf(this)) {
        if (!box->Check()) {
            session_.ShowMessageWindow(FromQt(box->Caption() + QLatin1Char(' ') + box->Fault()));
            box->Widget()->setFocus();
            return;
        }
    }
    if (!DTEStart->IsFilled()) {
        session_.ShowMessageWindow("Please fill in the date of the visit.");
        DTEStart->setFocus();
        return;
    }
    SuggestionRequest request;
    request.client = client_;
    request.day = *DTEStart->DateValue();
    request.time = DTEtime->TimeValue().value_or(Date());
    request.hours = NUMhours->Number();
    request.liveIn = CMBlivein->Text() == QLatin1String("Y");
    request.openedFrom = OpenedFrom;
    Chosen = Search(request);
    accept();
}

}  // namespace kv
