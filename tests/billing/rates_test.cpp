// A client's own billing rates, and the co-billing calculator.
#include <gtest/gtest.h>

#include "billing/client_rates.h"
#include "billing/cobilling_shares.h"
#include "clients/client_fixture.h"

namespace kv {
namespace {

using test::Lines;

class Rates : public test::ClientTest {
  protected:
    Rates() {
        AddClient("00001");
        agency.Insert("billcode_imaster", {{"billcode", 7}, {"insname", "Medicaid"}});
        agency.Insert("billcode_imaster", {{"billcode", 1}, {"insname", "Client"}});
        agency.Insert("billcode_idetail", {{"billcode", 7}, {"visittype", "PCA"}, {"rate1", 31}});
        for (const auto& [code, kind] :
             {std::pair{"PCA", "Both"}, {"BIL", "Billing Only"}, {"PAY", "Payroll Only"}}) {
            agency.Insert(
                "Visit_types",
                {{"code", code}, {"Description", std::string(code) + " work"}, {"payroll_or_billing", kind}});
        }
    }
    Recordset Own() { return OpenRates(session, "Client", "00001"); }
    bool Add(Recordset& rates, const char* code, double rate) {
        rates.AddNew();
        rates.Set("visittype", code);
        rates.Set("Description", CheckBilledCallType(session, code).description);
        rates.Set("rate1", Currency::FromDouble(rate));
        return SaveRate(session, rates, "00001");
    }
};

TEST_F(Rates, AreSavedWithTheirHistory) {
    Recordset rates = Own();
    EXPECT_FALSE(SaveRate(session, rates, "00001"));
    EXPECT_TRUE(Add(rates, "PCA", 25.5));
    EXPECT_EQ(agency.Said(), Lines{"message: You must add a record before you can save!"});
    EXPECT_EQ(agency.Rows("select CLIENT, visittype, Description, method, rate1 from clirate"),
              Lines{"00001|PCA|PCA work|H|25.5"});
    EXPECT_EQ(agency.Rows("select Type, Area, Status, reason from changes"),
              Lines{"CLI|00001|Bill Rate|Call Type: PCA  Desc: PCA work\r\nMethod: H\r\nRate 1: 25.50\r\n"
                    "Rate 2: 0.00\r\nRate 3: 0.00\r\nRate 4: 0.00\r\nRate 5: 0.00\r\nRate 6: 0.00\r\n"
                    "Live-in: 0.00\r\n"});
    session.OffLine = true;
    EXPECT_TRUE(Add(rates, "PCA", 26));
    EXPECT_EQ(agency.Said(),
              Lines{"message: You have added a Call Type that already existed.  Please delete one of "
                    "them."});
    EXPECT_EQ(agency.Rows("select Type, Module, ID from trans", "trans"), Lines{"E|C|00001"});
    for (const char* code : {"PAY", "XXX", ""}) {
        EXPECT_FALSE(Add(rates, code, 1)) << code;
        rates.CancelUpdate();
        EXPECT_EQ(agency.Said(), Lines{"message: You must enter in a valid call type before saving"});
    }
    agency.ports.dialogs.Answer({true});
    EXPECT_TRUE(DeleteRate(session, rates, "00001"));
    EXPECT_EQ(rates.RecordCount(), 1);
}

TEST_F(Rates, AreThoseOfThePayerLookedAt) {
    EXPECT_EQ(RatePayers(session), (Lines{"Client", "Medicaid"}));
    EXPECT_EQ(FirstPayer(session, "00001"), "Client");
    agency.Insert("Authorizations", {{"CLIENT", "00001"}, {"bill_name", "Medicaid"}, {"bill_code", 7}});
    EXPECT_EQ(FirstPayer(session, "00001"), "Medicaid");
    Recordset payers = OpenRates(session, "Medicaid", "00001");
    EXPECT_EQ(payers.RecordCount(), 1);
    EXPECT_THROW(payers.Edit(), EngineError) << "only the client's own rates can be changed here";
    EXPECT_EQ(OpenRates(session, "Nobody", "00001").RecordCount(), 0);
    EXPECT_EQ(CheckBilledCallType(session, "PAY").description, "Call Type is Payroll Only.");
    EXPECT_EQ(CheckBilledCallType(session, "XXX").description, "Invalid Call Type");

    agency.Code().Execute("update Agency set start7 = null, start8 = #18:00:00#, stop8 = #06:00:00#");
    const auto windows = ShiftWindows(session);
    EXPECT_STREQ(windows[4].rate, "rate5");
    EXPECT_FALSE(windows[4].start);
    EXPECT_EQ(windows[5].start, Date::FromTime(18, 0));
}

TEST_F(Rates, ArePastedFromAnotherClientAndCopied) {
    Recordset rates = Own();
    Add(rates, "PCA", 25);
    AddClient("00002");
    agency.ports.dialogs.Answer({true});
    EXPECT_FALSE(PasteRates(session, "00001", "00002"));
    EXPECT_EQ(agency.Said().back(), "message: Client you pasted from, does not have any billing rates");
    EXPECT_EQ(Own().RecordCount(), 1) << "nothing was deleted";
    agency.Insert(
        "clirate",
        {{"CLIENT", "00002"}, {"visittype", "BIL"}, {"method", "V"}, {"rate6", 9}, {"liveinrate", 100}});
    agency.ports.dialogs.Answer({false, true});
    EXPECT_FALSE(PasteRates(session, "00001", "00002"));
    EXPECT_TRUE(PasteRates(session, "00001", "00002"));
    EXPECT_EQ(
        agency.Rows("select visittype, method, rate1, rate6, liveinrate from clirate where client = '00001'"),
        Lines{"BIL|V|0|9|100"});

    std::vector<LookupItem> missing = CallTypesWithoutRate(session, "00001");
    ASSERT_EQ(missing.size(), 1U);
    EXPECT_EQ(missing[0].code, "PCA");
    missing[0].description = std::string(40, 'x');
    EXPECT_EQ(CopyRate(session, "00001", "BIL", missing), 1);
    EXPECT_EQ(
        agency.Rows(
            "select Description, method, rate6 from clirate where client = '00001' and visittype = 'PCA'"),
        Lines{std::string(30, 'x') + "|V|9"});
    EXPECT_EQ(CopyRate(session, "00001", "NONE", missing), 0);
}

TEST(Cobilling, SharesAreWorkedOut) {
    const CobillingShares total = SharesOfTotal(100, 80).value();
    EXPECT_DOUBLE_EQ(total.client, 20);
    EXPECT_DOUBLE_EQ(total.percent, 20);
    const CobillingShares portions = SharesOfPortions(30, 90);
    EXPECT_DOUBLE_EQ(portions.total, 120);
    EXPECT_DOUBLE_EQ(portions.percent, 25);
    EXPECT_DOUBLE_EQ(SharesOfPortions(1, 2).percent, 33.333);
    EXPECT_DOUBLE_EQ(SharesOfPortions(0, 0).percent, 0);
    EXPECT_FALSE(SharesOfTotal(80, 80));
}

}  // namespace
}  // namespace kv
