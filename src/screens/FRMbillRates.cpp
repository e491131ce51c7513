#include "screens/FRMbillRates.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include "base/format.h"
#include "base/text.h"
#include "clients/pick_query.h"
#include "screens/FRMIdFind.h"
#include "screens/FRMcopy.h"
#include "screens/FRMedit.h"
#include "screens/frmClient_controls.h"
#include "screens/help.h"
#include "screens/pick_screen.h"
#include "screens/record_list.h"
#include "screens/screen_steps.h"
#include "screens/widgets/field_form.h"
#include "screens/widgets/number_box.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/text_box.h"
#include "screens/widgets/theme.h"

namespace kv {

namespace {

constexpr const char* kRateFormat = "$##0.00";

GridColumn Money(const QString& heading) {
    GridColumn column;
    column.heading = heading;
    column.format = kRateFormat;
    return column;
}

}  // namespace

FRMbillRates::FRMbillRates(Session& session, QWidget* parent) : SectionScreen(parent), session_(session) {
    setObjectName(QStringLiteral("FRMbillRates"));
    setWindowTitle(QStringLiteral("Billing Rates"));
    PickOther = [this] { return PickClient(session_, this); };
    PickType = [this] { return FRMIdFind(session_, LoadBilledCallTypes(session_), this).Pick(); };
    RecordRules rules;
    rules.key = "visittype";
    rules.row = [](const Recordset& rate) {
        GridRow row;
        for (const char* field : {"visittype", "Description", "method", "rate1", "rate2", "rate3", "rate4",
                                  "rate5", "rate6", "liveinrate"}) {
            row.cells.push_back(rate.Get(field));
        }
        return row;
    };
    rules.save = [this](Recordset& rates) { return SaveRate(session_, rates, client_); };
    rules.remove = [this](Recordset& rates) { return DeleteRate(session_, rates, client_); };
    rules.move = [this](Recordset& rates, ListMove move) { return MoveRate(session_, rates, move); };
    DBcliRate = new RecordList(session, QStringLiteral("Toolbar2"), QStringLiteral("FGrate"),
                               {{tr("Call Type"), 9},
                                {QStringLiteral("Visit Description")},
                                {tr("Method"), 7},
                                Money(tr("Day")),
                                Money(tr("Evening")),
                                Money(tr("Night")),
                                Money(tr("Weekend Day")),
                                Money(tr("Weekend Eve.")),
                                Money(tr("Weekend Night")),
                                Money(tr("Live In"))},
                               std::move(rules), this,
                               {ToolSeparator(),
                                ToolKey{QStringLiteral("copy"),
                                        tr("Copy"),
                                        QStringLiteral("Copy Billing Rates from one Call Type to another"),
                                        QStringLiteral("paste"),
                                        {}},
                                ToolKey{QStringLiteral("history"),
                                        tr("History"),
                                        QStringLiteral("View all changes made to this billing rate."),
                                        QStringLiteral("history"),
                                        {}},
                                StandardKey(QStringLiteral("help"))});
    DBcliRate->List->setAccessibleName(tr("Billing rates"));
    DBcliRate->List->SetEmptyText(tr("There are no rates"));
    MakeBoxes(DBcliRate->Form);
    theme::KeepReadable(*DBcliRate->Form);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, theme::kHalfUnit);
    layout->setSpacing(0);
    layout->addWidget(MakePayer());
    layout->addWidget(DBcliRate, 1);
    layout->addWidget(MakePaste());

    connect(DBcliRate->Toolbar, &ToolBar::keyPressed, this, [this](const QString& key) {
        if (key == QLatin1String("copy")) {
            Reported(session_, [this] { CopyKey(); });
        } else if (key == QLatin1String("help")) {
            StartHelp(session_, "client~4");
        } else if (key == QLatin1String("history")) {
            Reported(session_, [this] { HistoryKey(); });
        }
    });
    connect(DBcliRate, &RecordList::rowAdded, this, [this] {
        TXTmethod->EnterValue(Value("H"));
        Reported(session_, [this] { PickTypeKey(); });
        txtVISitTYPE->setFocus();
    });
    connect(cmbPayor, &QComboBox::activated, this, [this] { Reported(session_, [this] { ShowRates(); }); });
    txtVISitTYPE->SetRule([this] {
        bool looked = false;
        Reported(session_, [&] {
            CheckType();
            looked = true;
        });
        return looked;
    });
    connect(CMDvistype, &QToolButton::clicked, this,
            [this] { Reported(session_, [this] { PickTypeKey(); }); });
    connect(CMDsave_Rates, &QPushButton::clicked, this,
            [this] { Reported(session_, [this] { PasteKey(); }); });
    connect(CMDcli_Find_Rates, &QToolButton::clicked, this, [this] {
        if (const std::string id = PickOther(); id != kCancelled) {
            TXTCli_Rates->setText(ToQt(id));
        }
    });
}

QWidget* FRMbillRates::MakePayer() {
    auto* area = new QWidget(this);
    cmbPayor = new QComboBox(area);
    cmbPayor->setObjectName(QStringLiteral("cmbPayor"));
    cmbPayor->setMinimumWidth(theme::CharactersWide(*cmbPayor, 30));
    auto* caption = new QLabel(QStringLiteral("&View Rates for this Payer:"), area);
    caption->setBuddy(cmbPayor);
    LBLrates = new QLabel(area);
    LBLrates->setObjectName(QStringLiteral("LBLrates"));
    QFont bold = LBLrates->font();
    bold.setBold(true);
    LBLrates->setFont(bold);
    auto* layout = new QHBoxLayout(area);
    layout->setContentsMargins(theme::kUnit, theme::kHalfUnit, theme::kUnit, 0);
    layout->addWidget(caption);
    layout->addWidget(cmbPayor);
    layout->addSpacing(2 * theme::kUnit);
    layout->addWidget(LBLrates, 1);
    return area;
}

void FRMbillRates::MakeBoxes(FieldForm* form) {
    constexpr std::array kNames = {"NUMrate1", "Numrate2", "Numrate3", "Numrate4",
                                   "Numrate5", "Numrate6", "Numrate7"};
    const std::array kCaptions = {tr("Weekday, day:"), tr("Weekday, evening:"), tr("Weekday, night:"),
                                  tr("Weekend, day:"), tr("Weekend, evening:"), tr("Weekend, night:"),
                                  tr("Live In:")};
    constexpr std::array kFields = {"rate1", "rate2", "rate3", "rate4", "rate5", "rate6", "liveinrate"};
    txtVISitTYPE = new TextBox(QStringLiteral("txtVISitTYPE"), tr("Call &Type:"), 8, form);
    CMDvistype = MakeSmallButton(QStringLiteral("CMDvistype"), QStringLiteral("search"),
                                 tr("Choose a call type"), form);
    TXTvisdesc = new TextBox(QStringLiteral("TXTvisdesc"), tr("Description:"), 28, form);
    TXTvisdesc->setReadOnly(true);
    TXTvisdesc->setFocusPolicy(Qt::ClickFocus);
    TXTmethod = new TextBox(QStringLiteral("TXTmethod"), tr("&Method:"), 2, form);
    TXTmethod->SetUpperCase(true);
    for (std::size_t i = 0; i < Rates.size(); ++i) {
        Rates[i] = new NumberBox(QString::fromLatin1(kNames[i]), kCaptions[i], kRateFormat, 9, form);
        Rates[i]->SetLimits(0, std::nullopt);
        DBcliRate->Source.Bind(*Rates[i], kFields[i]);
        if (i < Windows.size()) {
            Windows[i] = new QLabel(form);
            Windows[i]->setObjectName(IndexedName(QStringLiteral("TmeStart"), static_cast<int>(i)));
            Windows[i]->setForegroundRole(QPalette::PlaceholderText);
        }
    }
    Rates.back()->setToolTip(QStringLiteral("Bill Rate for a Live In shift."));
    const auto addRate = [&](std::size_t i) {
        form->AddField(*Rates[i]);
        if (i < Windows.size()) {
            form->AddBehind(Windows[i]);
        }
    };
    form->AddField(*txtVISitTYPE);
    form->AddBehind(CMDvistype);
    form->AddField(*TXTvisdesc);
    form->AddField(*TXTmethod);
    addRate(Rates.size() - 1);
    form->NextColumn();
    for (std::size_t i = 0; i < 3; ++i) {
        addRate(i);
    }
    form->NextColumn();
    for (std::size_t i = 3; i < 6; ++i) {
        addRate(i);
    }
    DBcliRate->Source.Bind(*txtVISitTYPE, "visittype");
    DBcliRate->Source.Bind(*TXTvisdesc, "Description");
    DBcliRate->Source.Bind(*TXTmethod, "method");
}

QWidget* FRMbillRates::MakePaste() {
    FRApaste = new QGroupBox(tr("Rates of Another Client"), this);
    TXTCli_Rates = new QLineEdit(FRApaste);
    TXTCli_Rates->setObjectName(QStringLiteral("TXTCli_Rates"));
    TXTCli_Rates->setFixedWidth(theme::CharactersWide(*TXTCli_Rates, 12));
    auto* caption = new QLabel(tr("Client I&D:"), FRApaste);
    caption->setBuddy(TXTCli_Rates);
    CMDcli_Find_Rates = MakeSmallButton(QStringLiteral("CMDcli_Find_Rates"), QStringLiteral("find_person"),
                                        tr("Show the client search screen."), FRApaste);
    CMDsave_Rates = new QPushButton(tr("&Paste Rates"), FRApaste);
    CMDsave_Rates->setObjectName(QStringLiteral("CMDsave_Rates"));
    CMDsave_Rates->setToolTip(
        QStringLiteral("Paste all billing rates from the client entered, into this client"));
    auto* layout = new QHBoxLayout(FRApaste);
    layout->addWidget(caption);
    layout->addWidget(TXTCli_Rates);
    layout->addWidget(CMDcli_Find_Rates);
    layout->addWidget(CMDsave_Rates);
    layout->addStretch(1);
    auto* area = new QWidget(this);
    auto* outer = new QHBoxLayout(area);
    outer->setContentsMargins(theme::kUnit, 0, theme::kUnit, 0);
    outer->addWidget(FRApaste);
    return area;
}

bool FRMbillRates::IsOwn() const {
    return FromQt(cmbPayor->currentText()) == kClientPays;
}

void FRMbillRates::SetHiddenID(const std::string& id, ClientForm& /*mainScreen*/) {
    const bool another = id != client_;
    client_ = id;
    if (cmbPayor->count() == 0) {
        for (const std::string& payer : RatePayers(session_)) {
            cmbPayor->addItem(ToQt(payer));
        }
        ShowWindows();
    }
    if (another) {
        cmbPayor->setCurrentIndex(std::max(0, cmbPayor->findText(ToQt(FirstPayer(session_, id)))));
    }
    ShowRates();
}

void FRMbillRates::ShowWindows() {
    const auto windows = ShiftWindows(session_);
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const ShiftWindow& window = windows[i];
        const auto time = [](Date moment) { return FormatDate(moment, "HH:NN"); };
        Rates[i]->setToolTip(QString::fromLatin1(window.meaning));
        if (!window.start) {
            // The agency has no such shift: the rate stays stored.
            Windows[i]->setText(tr("not used"));
            Rates[i]->SetEnabled(false);
            continue;
        }
        Windows[i]->setText(ToQt(time(*window.start) + " - " +
                                 (window.stop.IsNull() ? std::string() : time(window.stop.ToDate()))));
    }
}

void FRMbillRates::ShowRates() {
    if (!DBcliRate->Leave()) {
        return;
    }
    const bool own = IsOwn();
    const std::string payer = FromQt(cmbPayor->currentText());
    LBLrates->setText(own ? QStringLiteral("Billing Rates For This Client Only")
                          : QStringLiteral("All Billing Rates For Payer ") + ToQt(payer));
    DBcliRate->SetRecords(OpenRates(session_, payer, client_));
    for (const char* key : {"new", "delete", "save", "discard", "copy", "history"}) {
        DBcliRate->Toolbar->EnableKey(QString::fromLatin1(key), own);
    }
    DBcliRate->Form->setEnabled(own);
    FRApaste->setEnabled(own);
}

void FRMbillRates::CheckType() {
    const std::string code = FromQt(txtVISitTYPE->Text());
    if (Trim(code).empty()) {
        return;
    }
    const BilledCallType type = CheckBilledCallType(session_, code);
    txtVISitTYPE->EnterValue(Value(type.code));
    TXTvisdesc->EnterValue(Value(type.description));
    if (Trim(FromQt(TXTmethod->Text())).empty()) {
        TXTmethod->EnterValue(Value("H"));
    }
}

void FRMbillRates::PickTypeKey() {
    const std::string code = PickType();
    if (code != kCancelled && DBcliRate->Source.HasRow()) {
        txtVISitTYPE->EnterValue(Value(code));
        txtVISitTYPE->Finish();
    }
}

void FRMbillRates::PasteKey() {
    const std::string other = Trim(FromQt(TXTCli_Rates->text()));
    if (IsOwn() && DBcliRate->Leave() && PasteRates(session_, client_, other)) {
        TXTCli_Rates->clear();
        ShowRates();
    }
}

void FRMbillRates::CopyKey() {
    if (!DBcliRate->Leave()) {
        return;
    }
    std::vector<LookupItem> rates;
    Recordset rows = DBcliRate->Source.Rows().Clone();
    if (rows.RecordCount() == 0) {
        session_.ShowMessageWindow("You must add a record first");
        return;
    }
    for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) {
        rates.push_back({rows.Text("visittype"), rows.Text("Description")});
    }
    FRMcopy screen(session_, client_, rates, FromQt(txtVISitTYPE->Text()), this);
    if (screen.exec() == QDialog::Accepted) {
        ShowRates();
    }
}

void FRMbillRates::HistoryKey() {
    if (DBcliRate->Source.Count() == 0) {
        session_.ShowMessageWindow("You must add a record first");
        return;
    }
    FRMedit history(session_, this);
    history.ShowRecord(QStringLiteral("Client ID:"), "CLI", client_, RateHistoryStatement(client_));
    history.exec();
}

bool FRMbillRates::MayLeave() {
    return DBcliRate->Leave();
}

}  // namespace kv
