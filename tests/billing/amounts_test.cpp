// What is billed and paid for a visit.
#include <gtest/gtest.h>

#include "billing/visit_amounts.h"
#include "support/test_agency.h"

namespace kv {
namespace {

Date Moment(int day, int hour, int minute = 0) {
    return Date::FromCivil(2026, 3, day, hour, minute);
}

/// The rates of the shifts are 10, 20, 30 on weekdays and 40, 50, 60 at weekends: an amount tells its shift.
class Amounts : public ::testing::Test {
  protected:
    static ShiftWindow Shift(std::optional<int> from, int to) {
        ShiftWindow window;
        if (from) {
            window.start = Date::FromTime(*from, 0);
            window.stop = Value(Date::FromTime(to, 0));
        }
        return window;
    }
    static RateRow Rates(const char* method) {
        RateRow row;
        row.method = method;
        row.rates = {10, 20, 30, 40, 50, 60};
        row.liveIn = 240;
        return row;
    }
    /// 2026-03-04 is a Wednesday, the 7th a Saturday.
    const ShiftTimes threeShifts_ = {Shift(7, 15), Shift(15, 23), Shift(23, 7),
                                     Shift(7, 15), Shift(15, 23), Shift(23, 7)};
    const ShiftTimes eveningAllDay_ = {Shift({}, 0), Shift(8, 8),  Shift({}, 0),
                                       Shift(0, 0),  Shift({}, 0), Shift({}, 0)};
    const ShiftTimes none_ = {Shift({}, 0), Shift({}, 0), Shift({}, 0),
                              Shift({}, 0), Shift({}, 0), Shift({}, 0)};
};

TEST_F(Amounts, AreThoseOfTheShifts) {
    struct Case {
        const char* what = "";
        const ShiftTimes& shifts;
        const char* method = "";
        Date start;
        double hours = 0;
        double bill = 0;
        double pay = 0;
    };
    const Case cases[] = {
        {"within the day", threeShifts_, "H", Moment(4, 8), 4, 40, 40},
        {"billed by its start, paid by its pieces", threeShifts_, "H", Moment(4, 14), 6, 60, 110},
        {"an end on the border", threeShifts_, "H", Moment(4, 11), 4, 40, 40},
        {"a start on the border", threeShifts_, "H", Moment(4, 15), 2, 40, 40},
        {"through all three", threeShifts_, "H", Moment(4, 14), 10, 100, 10 + 8 * 20 + 30},
        {"over midnight in one shift", threeShifts_, "H", Moment(4, 23), 4, 120, 120},
        {"in the morning of a night shift", threeShifts_, "H", Moment(4, 2), 3, 90, 90},
        {"from the night into the day", threeShifts_, "H", Moment(4, 5), 4, 120, 2 * 30 + 2 * 10},
        {"a whole day and night", threeShifts_, "H", Moment(4, 7), 24, 240, 8 * 10 + 8 * 20 + 8 * 30},
        {"at the weekend", threeShifts_, "H", Moment(7, 14), 2, 80, 40 + 50},
        {"into the weekend", threeShifts_, "H", Moment(6, 23), 4, 120, 30 + 3 * 60},
        {"quarters of an hour", threeShifts_, "H", Moment(4, 14, 45), 0.5, 5, 0.25 * 10 + 0.25 * 20},
        {"one shift all day", eveningAllDay_, "H", Moment(4, 14), 3, 60, 60},
        {"one shift all day, over midnight", eveningAllDay_, "H", Moment(4, 22), 4, 80, 80},
        {"one shift all day, in the morning", eveningAllDay_, "H", Moment(4, 2), 3, 60, 60},
        {"by the visit", threeShifts_, "V", Moment(4, 14), 6, 10, 10},
        {"a flat rate", threeShifts_, "F", Moment(4, 14), 6, 60, 60},
        {"no shift at all", none_, "H", Moment(4, 14), 6, 0, 0},
        {"no hours", threeShifts_, "H", Moment(4, 14), 0, 0, 0},
    };
    for (const Case& each : cases) {
        const RateRow row = Rates(each.method);
        EXPECT_NEAR(RateVisitForBilling(each.shifts, &row, each.start, each.hours), each.bill, 1e-9)
            << each.what;
        EXPECT_NEAR(RateVisitForPay(each.shifts, row, each.start, each.hours), each.pay, 1e-9) << each.what;
        EXPECT_EQ(RateVisitForBilling(each.shifts, nullptr, each.start, each.hours), 0) << each.what;
    }
    // Moments compare by their texts, the month first.
    const RateRow row = Rates("H");
    EXPECT_EQ(RateVisitForBilling(threeShifts_, &row, Date::FromCivil(2026, 12, 31, 23), 4), 0)
        << "the night over the turn of the year";
}

TEST_F(Amounts, TakeTheRowThatStands) {
    test::TestAgency agency;
    Session& session = agency.session();
    agency.Code().Execute("update Agency set start1 = #00:00:00#, stop1 = #00:00:00#");
    const auto rate = [](double dollars) { return Value(Currency::FromDouble(dollars)); };
    agency.Insert("Employee",
                  {{"emp_id", "E1"}, {"rate1", rate(5)}, {"liveinrate", rate(48)}, {"method", "V"}});
    const RatedVisit visit = {"00001", "PCA", 7, false, "E1"};
    const RatedVisit ownVisit = {"00001", "PCA", 1, false, "E1"};
    RatedVisit liveIn = visit;
    liveIn.liveIn = true;
    const Date start = Moment(4, 9);
    EXPECT_EQ(PayAmountForVisit(session, visit, start, 4), 20) << "her own rates are by the hour";
    EXPECT_EQ(PayAmountForVisit(session, liveIn, start, 12), 24);
    EXPECT_EQ(BillAmountForVisit(session, visit, start, 4), 0);
    EXPECT_EQ(BillAmountForVisit(session, liveIn, start, 12), 0);

    agency.Insert(
        "emprate",
        {{"employee", "E1"}, {"client", ""}, {"visittype", "PCA"}, {"method", "H"}, {"rate1", rate(6)}});
    EXPECT_EQ(PayAmountForVisit(session, visit, start, 4), 24);
    agency.Insert(
        "emprate",
        {{"employee", "E1"}, {"client", "00002"}, {"visittype", "PCA"}, {"method", "H"}, {"rate1", rate(9)}});
    agency.Insert(
        "emprate",
        {{"employee", "E1"}, {"client", "00001"}, {"visittype", "PCA"}, {"method", "H"}, {"rate1", rate(7)}});
    EXPECT_EQ(PayAmountForVisit(session, visit, start, 4), 28);
    VisitAmounts many(session);
    many.ReadPayRates("00001", "PCA");
    EXPECT_EQ(many.Pay(visit, start, 4), 28);
    EXPECT_EQ(many.Pay({"00001", "NUR", 7, false, "E1"}, start, 4), 20) << "of another type";
    EXPECT_EQ(many.Pay({"00001", "PCA", 7, false, "E9"}, start, 4), 0);

    agency.Insert("clirate", {{"CLIENT", "00001"},
                              {"visittype", "PCA"},
                              {"method", "V"},
                              {"rate1", rate(55)},
                              {"liveinrate", rate(240)}});
    agency.Insert("billcode_idetail",
                  {{"billcode", 7}, {"visittype", "PCA"}, {"method", "H"}, {"rate1", rate(12)}});
    EXPECT_EQ(BillAmountForVisit(session, ownVisit, start, 4), 55);
    EXPECT_EQ(BillAmountForVisit(session, visit, start, 4), 48);
    RatedVisit ownLiveIn = ownVisit;
    ownLiveIn.liveIn = true;
    EXPECT_EQ(BillAmountForVisit(session, ownLiveIn, start, 12), 120);
}

}  // namespace
}  // namespace kv
