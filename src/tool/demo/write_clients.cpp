#include <fmt/format.h>

#include "base/text.h"
#include "tool/demo/attributes.h"
#include "tool/demo/lists.h"
#include "tool/demo/people.h"
#include "tool/demo/referrals.h"
#include "tool/demo/rows.h"
#include "tool/demo/texts.h"

namespace kv::demo {
namespace {

/// Who treats or manages a client: the name as the client's row keeps it, and the note that comes with it.
struct Contact {
    std::string name;
    std::string note;
};

std::vector<Contact> ReadContacts(Database& code, std::string_view table) {
    std::vector<Contact> contacts;
    for (Recordset row = code.OpenRecordset(Sql("select * from {} order by id", Raw{std::string(table)}));
         !row.Eof(); row.MoveNext()) {
        contacts.push_back({Left(row.Text("Name"), 30), row.Text("Note")});
    }
    return contacts;
}

class ClientWriter {
  public:
    ClientWriter(Database& work, Database& code, const World& world, Random random)
        : world_(world),
          calendar_(world.calendar),
          sources_(
              WriteReferrals(work, world.calendar, static_cast<long>(world.clients.size()), random.Fork(1))),
          doctors_(ReadContacts(code, "doctors")),
          managers_(ReadContacts(code, "casemgr")),
          clients_(work, "ClientPR"),
          phones_(code, "hkeylonglat"),
          attributes_(work, code, world.calendar) {}

    void Write(int place, const Client& client, Random random) {
        WriteRow(place, client, false, random);
        WritePhones(client, random);
        attributes_.Write(place, client, world_, random.Fork(1));
    }

    void WriteTemplates(Random random) {
        for (const ClientTemplate& pattern : kTemplates) {
            Client client;
            client.id = pattern.id;
            client.first = pattern.first;
            client.last = pattern.last;
            client.discipline = kVisitTypes[pattern.visitType].discipline;
            client.skills = {4, 6};
            client.manager = 0;
            WriteRow(0, client, true, random);
            attributes_.WriteTemplate(client, random);
        }
    }

  private:
    Date BirthDate(int place, Random& random) const {
        // The birthday check looks for those whose birthday is the empty date.
        return place % 37 == 11 ? Date(0.0)
                                : Date(static_cast<double>(calendar_.today - random.Between(20500, 35500)));
    }

    void WriteRow(int place, const Client& client, bool isTemplate, Random& random) {
        const auto maybe = [&](int percent, auto&& value) {
            const bool chosen = !isTemplate && random.Chance(percent);
            return chosen ? Value(value) : Value("");
        };
        const auto code = [&](int percent, const auto& list) {
            return maybe(percent, random.Pick(list).code);
        };
        const bool person = !isTemplate;
        const bool relative = person && random.Chance(85);
        const bool neighbor = relative && random.Chance(35);
        const bool thirdParty = person && random.Chance(15);
        const Address emergency = MakeAddress(random);
        const Address bill = MakeAddress(random);
        const std::string relativeFirst = MakeFirstName(random, random.Chance(60));
        const Contact& doctor = random.Pick(doctors_);
        const Contact& manager = random.Pick(managers_);
        const bool hasDoctor = person && random.Chance(80);
        const bool hasManager = person && client.payer != 0 && random.Chance(60);
        const ReferralSource& source = random.Pick(sources_);
        const bool referred = person && source.forClients && random.Chance(80);
        const User& editor = kUsers[random.Below(kActiveUsers)];
        const Date saved = calendar_.now.AddMinutes(-static_cast<double>(random.Between(30, 120L * 1440)));
        clients_.Add({{"CLIENT", client.id},
                      {"LASTNAME", client.last},
                      {"FIRSTNAM", client.first},
                      {"STREET", client.street},
                      {"ADDRESS2", maybe(12, "Building " + std::to_string(random.Between(1, 9)))},
                      {"apt", maybe(30, std::to_string(random.Between(1, 40)))},
                      {"CITY", client.town},
                      {"STATE", person ? kState : ""},
                      {"ZIP", client.zip},
                      {"PHONE", client.phone},
                      {"EXT_PHONE", client.secondPhone},
                      {"ALT_PHONE_DESC", client.secondPhone.empty() ? "" : random.Pick(kPhoneKinds)},
                      {"EMAIL", maybe(35, MakeEmail(client.first, client.last, random))},
                      {"SSN", maybe(92, MakeSocialNumber(random))},
                      {"BDATE", person ? Value(BirthDate(place, random)) : Value()},
                      {"SEX", !person         ? ""
                              : client.female ? "F"
                                              : "M"},
                      {"LANGUAGE", kLanguages[client.language].code},
                      {"ETHNIC", code(60, kEthnics)},
                      {"BORO", person ? kDistricts[client.district].description : ""},
                      {"PROV_SEX", std::string(1, client.caregiverSex)},
                      {"ORD_DISCPL", kDisciplines[client.discipline].code},
                      {"HOL_COV", client.holidayCover ? "YES" : "NO"},
                      {"grouping", kClientGroups[client.group].description},
                      {"MANAGER", client.manager < 0 ? "" : kManagers[client.manager].code},
                      {"FSL", code(85, kFieldSupervisors)},
                      {"DISASTER_CODE", kPriorities[client.priority].code},
                      {"DIET", code(55, kDiets)},
                      {"EMERGCONT", relative ? relativeFirst + " " + client.last : ""},
                      {"EMGSTREET", relative ? emergency.street : ""},
                      {"EMGCITY", relative ? emergency.town->name : ""},
                      {"EMGSTATE", relative ? kState : ""},
                      {"EMGZIP", relative ? emergency.town->zip : ""},
                      {"EMGCYPHONe", relative ? MakePhone(random.Below(1800)) : ""},
                      {"EMG_NAME2", neighbor ? random.Pick(kFemaleNames) : ""},
                      {"EMG_PHONE2", neighbor ? MakePhone(random.Below(1800)) : ""},
                      {"EMG_NAME3", ""},
                      {"EMG_PHONE3", ""},
                      {"NURSE", code(60, kNurses)},
                      {"NURLVCODE", code(60, kNurseVisits)},
                      {"NURLASTVIS",
                       person && random.Chance(55) ? DayOrNull(calendar_.today - random.Below(90)) : Value()},
                      {"DIAGNOSIS", code(85, kDiagnoses)},
                      {"DIAGNOSIS2", code(40, kDiagnoses)},
                      {"DIAGNOSIS3", ""},
                      {"diagnosis4", maybe(8, "History of falls")},
                      {"CASE_NAME", hasManager ? manager.name : ""},
                      {"CASE_NOTE", hasManager ? manager.note : ""},
                      {"DOC_NAME", hasDoctor ? doctor.name : ""},
                      {"DOC_NOTE", hasDoctor ? doctor.note : ""},
                      {"qbclass", maybe(50, random.Pick(kQuickBooksClasses).description)},
                      {"external_id", maybe(25, fmt::format("800{:05X}-{}", place + 16,
                                                            1200000000 + random.Below(90000000)))},
                      {"External_id2", ""},
                      {"External_id3", ""},
                      {"istelephony", client.telephony},
                      {"MEDICAIDNO", maybe(40, fmt::format("{:09}", random.Below(1000000000)))},
                      {"directions", maybe(60, random.Pick(kDirections))},
                      {"Comments", person && random.Chance(70) ? NoteJournal(calendar_.now, random) : ""},
                      {"BILL_NAME", thirdParty ? relativeFirst : ""},
                      {"BILL_LASTNAME", thirdParty ? client.last : ""},
                      {"BILL_ADDRESS", thirdParty ? bill.street : ""},
                      {"BILL_ADDRESS2", ""},
                      {"BILL_CITY", thirdParty ? bill.town->name : ""},
                      {"BILL_STATE", thirdParty ? kState : ""},
                      {"BILL_ZIP", thirdParty ? bill.town->zip : ""},
                      {"BILL_PHONE", thirdParty ? MakePhone(random.Below(1800)) : ""},
                      {"Bill_How_Often", std::string(1, random.Pick(std::string_view("WWWBMO")))},
                      {"BILLING_TYPE", random.Pick(kBillingTypes)},
                      {"Billmile_rate", Currency::FromDouble(calendar_.mileageRate)},
                      {"BILL_MILEAGE", client.billMileage},
                      {"BILL_ERRAND", client.billErrand},
                      {"BILL_EXPENSES", client.billExpenses},
                      {"BILL_HOLIDAY", random.Chance(30)},
                      {"Bill_Ot", random.Chance(20)},
                      {"Invoice_Terms", maybe(30, "Due within 15 days")},
                      {"Invoice_Instructions", maybe(10, "Mail two copies")},
                      {"First_contact", DayOrNull(client.firstContact)},
                      {"STARTSERVC", DayOrNull(client.start)},
                      {"CASEEXPDAT", DayOrNull(client.end)},
                      {"ref_grouping", referred ? source.category : ""},
                      {"ref_source", referred ? source.name : ""},
                      {"Ref_name", referred && random.Chance(70) ? random.Pick(source.contacts) : ""},
                      {"CASESTATCD", std::string(1, client.status)},
                      {"potientalstatus", client.status != 'Z'             ? ""
                                          : client.care == Care::Potential ? "Active"
                                                                           : "InActive"},
                      {"ISTEMPLATE", isTemplate ? 1 : 0},
                      {"Deleted", false},
                      {"vendor", kVendor},
                      {"status_date", saved},
                      {"Status", "E"},
                      {"User_Id", editor.id}});
    }

    void WritePhones(const Client& client, Random& random) {
        if (!client.telephony) {
            return;
        }
        const auto add = [&](const std::string& phone) {
            phones_.Add({{"branchid", kVendor},
                         {"CLTid", client.id},
                         {"phonenum", phone},
                         {"addr", client.street},
                         {"Zip", client.zip},
                         {"Status", std::string(1, client.status)}});
        };
        add(client.phone);
        if (!client.secondPhone.empty() && client.secondPhone != client.phone && random.Chance(60)) {
            add(client.secondPhone);
        }
    }

    static constexpr const char* kPhoneKinds[] = {"2nd", "Cell", "Work"};
    static constexpr const char* kBillingTypes[] = {"Scheduled", "Actual", "Rounded"};

    const World& world_;
    const Calendar& calendar_;
    std::vector<ReferralSource> sources_;
    std::vector<Contact> doctors_, managers_;
    TableFiller clients_, phones_;
    AttributeWriter attributes_;
};

}  // namespace

void WriteClients(Database& work, Database& code, const World& world, Random random) {
    ClientWriter writer(work, code, world, random);
    for (std::size_t i = 0; i < world.clients.size(); ++i) {
        writer.Write(static_cast<int>(i), world.clients[i], random.Fork(i + 2));
    }
    writer.WriteTemplates(random.Fork(0));
}

}  // namespace kv::demo
