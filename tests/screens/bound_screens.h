#pragma once
#include <QApplication>
#include <QStatusBar>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "datastore/workspace.h"
#include "screens/FRMNotVisit.h"
#include "screens/FRMauthorization.h"
#include "screens/FRMbillRates.h"
#include "screens/FRMmisc.h"
#include "screens/FRmassign.h"
#include "screens/client_screen.h"
#include "screens/frmAddPhone.h"
#include "screens/frmClient_list.h"
#include "screens/record_list.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/outline_tree.h"

namespace kv::test {

/// What the operator is asked before a changed record goes out of sight, as ScriptedDialogs keeps it.
inline const std::string kSavePrompt =
    "question: Some information has changed, and is not saved.  Do you wish to save?";

/// Every screen that ties boxes to a row, each with two rows of client 00001 to move between, and a second
/// seat on the same data. What is typed and pressed goes to the window that Open has shown.
class BoundScreens : public ClientScreenTest {
  public:
    BoundScreens() {
        session.WKENDING = "SAT";
        agency.Code().Execute("update Agency set sch_weeks = 2, start1 = #08:00:00#, start2 = #16:00:00#");
        AddPeople();
        AddLists();
        AddService();
    }
    ~BoundScreens() override {
        dialog_.reset();
        screen_.reset();
    }

    /// The main screen on its first client, one of its parts in front.
    QWidget& OpenPart(int part) {
        if (screen_ == nullptr) {
            ClientScreenTest::Open();
        }
        screen_->ShowPart(part);
        return Use(*screen_);
    }
    template <typename Screen>
    Screen& OpenSection(int index) {
        OpenPart(0);
        screen_->OpenSection(index);
        return *screen_->findChild<Screen*>();
    }
    QWidget& OpenAuthorizations() { return OpenSection<FRMauthorization>(2), Use(*screen_); }
    QWidget& OpenRates() {
        auto& rates = OpenSection<FRMbillRates>(1);
        rates.PickType = [] { return std::string("CANCEL"); };
        rates.cmbPayor->setCurrentIndex(rates.cmbPayor->findText(QStringLiteral("Client")));
        emit rates.cmbPayor->activated(rates.cmbPayor->currentIndex());
        return Use(*screen_);
    }
    QWidget& OpenBanned() { return OpenSection<FRMNotVisit>(4), Use(*screen_); }
    QWidget& OpenPhones() { return OpenSection<frmAddPhone>(5), Use(*screen_); }
    QWidget& OpenAssignments() {
        auto assign = std::make_unique<FRmassign>(session, ParentOf(session, authorization_).value());
        assign->Asks.showConflicts = [](const auto&) { return true; };
        assign->Asks.askMove = [](int forward, int) { return forward; };
        assign->Asks.updateSchedules = [](const ScheduleUpdate&) {};
        return OpenDialog(std::move(assign));
    }
    QWidget& OpenPeople(PeopleTable table) {
        return OpenDialog(std::make_unique<FRMmisc>(session, table, ""));
    }

    QWidget& Box(const char* name) { return *qt_driver::Find<QWidget>(window_, QString::fromLatin1(name)); }
    BoundControl& Bound(const char* name) { return dynamic_cast<BoundControl&>(Box(name)); }
    std::string Shown(const char* name) { return FromQt(Bound(name).Text()); }
    void Retype(const char* name, const char* text) {
        qt_driver::Retype(Box(name), QString::fromLatin1(text));
    }
    /// A button of the toolbar over the boxes.
    void Click(const char* key) {
        const QWidget* section = screen_ == nullptr ? nullptr : screen_->findChild<SectionScreen*>();
        const bool over = section != nullptr && dialog_ == nullptr;
        qt_driver::ClickKey(over ? const_cast<QWidget*>(section) : window_, QString::fromLatin1(key));
    }
    /// Another client is picked, or the dialog is closed.
    void LeaveScreen() {
        if (dialog_ != nullptr) {
            Key(Qt::Key_Escape);
        } else {
            emit screen_->ListPane->FGtree->rowPicked("00002");
        }
    }
    /// A key of the keyboard to whatever has the focus.
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        qt_driver::Press(*window_, key, modifiers);
    }
    void SaveByKey() { Key(Qt::Key_S, Qt::ControlModifier); }
    std::string Status() { return FromQt(window_->findChild<QStatusBar*>()->currentMessage()); }
    bool HasFocus(const char* name) {
        const QWidget* focus = QApplication::focusWidget();
        return focus != nullptr && (focus == &Box(name) || Box(name).isAncestorOf(focus));
    }

    /// A database as another seat, whose user is BOB, has it open.
    Database& OtherSeatOn(const std::string& name) {
        for (const auto& [opened, database] : seats_) {
            if (opened == name) {
                return *database;
            }
        }
        otherSeat_.SetSeat("BOB");
        seats_.emplace_back(name, otherSeat_.OpenDatabase(agency.Place(name)));
        return *seats_.back().second;
    }
    /// All rows that the screens may write.
    Lines Everything() {
        Lines all;
        const auto add = [&](const std::string& statement, const char* database) {
            for (std::string& row : agency.Rows(statement, database)) {
                all.push_back(std::move(row));
            }
        };
        for (const char* table : {"clientpr", "Authorizations", "assign", "sch_day", "clirate", "emp_ban"}) {
            add(std::string("select * from ") + table + " order by client", "kestrava");
        }
        add("select type, area, status, reason from changes", "kestrava");
        add("select * from hkeylonglat order by phonenum", "main");
        add("select * from doctors order by id", "main");
        add("select * from casemgr order by id", "main");
        return all;
    }

    std::unique_ptr<QDialog> dialog_;
    QWidget* window_ = nullptr;
    long authorization_ = 0;

  private:
    QWidget& Use(QWidget& window) {
        window_ = &window;
        return window;
    }
    QWidget& OpenDialog(std::unique_ptr<QDialog> dialog) {
        dialog_ = std::move(dialog);
        qt_driver::Show(*dialog_);
        return Use(*dialog_);
    }
    void AddPeople() {
        AddClient("00001", {{"LASTNAME", "Grant"},
                            {"FIRSTNAM", "Ida"},
                            {"STREET", "1 Oak"},
                            {"PHONE", "5185550100"},
                            {"grouping", "North"},
                            {"HOL_COV", "NO"}});
        AddClient("00002", {{"LASTNAME", "Hill"}});
        for (const auto& [id, last] : {std::pair("E1", "Ames"), {"E2", "Bell"}, {"E3", "Zorn"}}) {
            agency.Insert("Employee",
                          {{"Emp_id", id}, {"LastName", last}, {"FirstName", "Al"}, {"t_code", "A"}});
            if (id != std::string("E3")) {
                agency.Insert("emp_ban", {{"CLIENT", "00001"},
                                          {"emp_id", id},
                                          {"Emp_name", std::string(last) + ", Al"},
                                          {"Notes", "Late"}});
            }
        }
        session.rsEmployee.Requery();
        for (const char* phone : {"5185550111", "5185550122"}) {
            agency.Insert("hkeylonglat", {{"CLTid", "00001"}, {"phonenum", phone}, {"Status", "A"}});
        }
        for (const char* table : {"main.doctors", "main.casemgr"}) {
            for (const char* name : {"Dr. Ames", "Dr. Bell"}) {
                agency.Insert(table, {{"Name", name}, {"City", "Troy"}, {"Zip", "12180"}});
            }
        }
    }
    void AddLists() {
        for (const char* group : {"North", "South", "East"}) {
            agency.Insert("cli_group", {{"description", group}});
        }
        for (const char* list : {"DIAGNOSIS", "NURSE", "ETHNIC", "VISIT"}) {
            const std::string table = std::string("main.") + list;
            agency.Insert(table, {{"code", "436"}, {"description", "Stroke"}});
            agency.Insert(table, {{"code", "250"}, {"description", "Diabetes"}});
        }
        agency.Insert("billcode_imaster", {{"billcode", 1}, {"insname", "Client"}});
        agency.Insert("billcode_imaster", {{"billcode", 7}, {"insname", "Medicaid"}});
        for (const auto& [code, text] : {std::pair("PCA", "Personal Care"), {"NUR", "Nursing"}}) {
            agency.Insert("Visit_types",
                          {{"code", code}, {"Description", text}, {"payroll_or_billing", "Both"}});
            agency.Insert("billcode_idetail", {{"billcode", 7}, {"visittype", code}, {"Description", text}});
            agency.Insert("clirate", {{"CLIENT", "00001"},
                                      {"visittype", code},
                                      {"Description", text},
                                      {"method", "H"},
                                      {"rate1", Currency::FromDouble(20)},
                                      {"rate2", Currency::FromDouble(21)}});
        }
    }
    void AddService() {
        for (const int month : {3, 1}) {
            authorization_ = static_cast<long>(
                agency.Insert("Authorizations", {{"CLIENT", "00001"},
                                                 {"bill_code", 7},
                                                 {"bill_name", "Medicaid"},
                                                 {"visit_type", "PCA"},
                                                 {"vis_desc", "Personal Care"},
                                                 {"from_date", Date::FromCivil(2026, month, 1)},
                                                 {"to_DATE", Date::FromCivil(2026, 12, 31)},
                                                 {"WEEKORMONTH", "W"},
                                                 {"HRS", 10},
                                                 {"status_code", "A"},
                                                 {"sch_type", "R"},
                                                 {"SHIFT_CODE", "2"},
                                                 {"cobilling_type", 1},
                                                 {"cobilling_amount", 20},
                                                 {"NOTES", "By phone"}}));
        }
        for (const auto& [day, status] : {std::pair("TUE", "2"), {"THU", "4"}}) {
            agency.Insert("assign", {{"author_seq", authorization_},
                                     {"CLIENT", "00001"},
                                     {"Day", day},
                                     {"Status", status},
                                     {"St_time", Date::FromTime(9, 0)},
                                     {"END_TIME", Date::FromTime(11, 0)},
                                     {"HRS", 2},
                                     {"howoften", 1},
                                     {"Last_date", Date::FromCivil(2026, 3, 7)},
                                     {"Type", "A"}});
            agency.Insert("sch_day", {{"CLIENT", "00001"}, {"sch_code", "A"}, {"cli_group", "North"}});
        }
    }

    Workspace otherSeat_;
    std::vector<std::pair<std::string, DatabasePtr>> seats_;
};

}  // namespace kv::test
