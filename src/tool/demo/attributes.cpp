#include "tool/demo/attributes.h"

#include "base/text.h"
#include "tool/demo/lists.h"
#include "tool/demo/texts.h"

namespace kv::demo {
namespace {

constexpr const char* kBanReasons[] = {"Came late three times and didn't call.",
                                       "Client asked for somebody else.", "Allergic to the client's cats.",
                                       "The two did not get along."};
struct Document {
    const char* file;
    const char* description;
};
constexpr Document kDocuments[] = {{"Service agreement.pdf", "Signed service agreement"},
                                   {"Doctor's orders.doc", "Physician orders"},
                                   {"House.jpg", "Picture of the entrance"},
                                   {"Invoices.xls", "Invoices by month"},
                                   {"Letters", "Correspondence"}};

/// The ids under which a master list holds the descriptions.
template <typename List, typename Name>
std::vector<long> IdsOf(Database& code, const char* table, const List& list, Name name) {
    std::vector<long> ids;
    for (const auto& entry : list) {
        const std::string query = Sql("select id from {} where description = {}", Raw{table}, name(entry));
        ids.push_back(static_cast<long>(code.Lookup(query).ToInteger()));
    }
    return ids;
}

std::string ExtraText(int extra, Random& random) {
    constexpr const char* kValues[][3] = {{"", "", ""},
                                          {"4711", "2580", "Key box 1357"},
                                          {"Two cats", "Small dog", "Parrot"},
                                          {"Lakeside General Hospital", "Harbor General Hospital", "None"},
                                          {"Behind the house", "Street only", "Garage, level 2"},
                                          {"Both ears", "Left ear", "Refuses to wear it"}};
    return extra == kPopup ? random.Pick(kPopups) : random.Pick(kValues[extra]);
}

}  // namespace

AttributeWriter::AttributeWriter(Database& work, Database& code, const Calendar& calendar)
    : calendar_(calendar),
      extraIds_(IdsOf(code, "cli_PERSONNEL", kClientExtras, [](const char* extra) { return extra; })),
      requirementIds_(IdsOf(code, "cli_requirements", kClientRequirements,
                            [](const Requirement& requirement) { return requirement.description; })),
      misc_(work, "cli_misc"),
      carePlan_(work, "care_plan"),
      personnel_(work, "cli_personnel"),
      required_(work, "CLI_Required"),
      documents_(work, "cli_documents"),
      bans_(work, "Emp_ban") {}

void AttributeWriter::Write(int place, const Client& client, const World& world, Random random) {
    WriteLists(client, random);
    if (client.status != 'Z') {
        WriteCarePlan(client, random);
    }
    WriteExtras(client, random);
    WriteRequired(client, random);
    if (place % 4 == 1) {
        WriteDocuments(client, random);
    }
    WriteBans(client, world, random);
}

void AttributeWriter::WriteTemplate(const Client& client, Random& random) {
    WriteLists(client, random);
    WriteCarePlan(client, random);
}

void AttributeWriter::WriteLists(const Client& client, Random& random) {
    const auto add = [&](const char* area, const Value& code, const char* description) {
        misc_.Add({{"CLIENT", client.id}, {"Area", area}, {"ID", code}, {"Description", description}});
    };
    for (const int skill : client.skills) {
        add("SKI", kSkills[skill].code, kSkills[skill].description);
    }
    for (const ListRow& diagnosis : kIcd9) {
        if (random.Chance(14)) {
            add("ICD", diagnosis.code, diagnosis.description);
        }
    }
    for (const ListRow& callType : kExtraCallTypes) {
        if (random.Chance(7)) {
            const bool typed = StartsWithNoCase(callType.description, "ADD A NEW");
            add("CTY", typed ? Value() : Value(callType.code), typed ? "Pet Care" : callType.description);
        }
    }
}

void AttributeWriter::WriteCarePlan(const Client& client, Random& random) {
    const auto add = [&](const char* group, const char* description) {
        carePlan_.Add({{"CLIENT", client.id}, {"Group", group}, {"Description", description}});
    };
    for (const ListRow& item : kCarePlan) {
        const bool typed = StartsWithNoCase(item.description, "Add a New");
        if (random.Chance(40)) {
            add(item.code, typed ? random.Pick(kMedications) : item.description);
        }
    }
    if (random.Chance(60)) {
        add("Diet", random.Pick(kDiets).description);
    }
}

void AttributeWriter::WriteExtras(const Client& client, Random& random) {
    for (int extra = 0; extra < static_cast<int>(std::size(kClientExtras)); ++extra) {
        if (random.Chance(extra == kPopup ? 6 : 22)) {
            personnel_.Add({{"CLIENT", client.id},
                            {"ID", extraIds_[static_cast<std::size_t>(extra)]},
                            {"Description", kClientExtras[extra]},
                            {"input_desc", "Equals"},
                            {"input_text", ExtraText(extra, random)}});
        }
    }
}

void AttributeWriter::WriteRequired(const Client& client, Random& random) {
    for (std::size_t i = 0; i < std::size(kClientRequirements); ++i) {
        const Requirement& requirement = kClientRequirements[i];
        if (!random.Chance(45)) {
            continue;
        }
        const bool certified = requirement.months > 0;
        const long days = certified ? -random.Between(5, requirement.months * 32L) : random.Between(-30, 300);
        const Date typed(static_cast<double>(calendar_.today + days));
        required_.Add({{"CLIENT", client.id},
                       {"ID", requirementIds_[i]},
                       {"Description", requirement.description},
                       {"months", requirement.months},
                       {"input_date", typed},
                       {"input_desc", certified ? "Certified on" : "Expires on"},
                       {"exp_date", typed.AddMonths(requirement.months)}});
    }
}

void AttributeWriter::WriteDocuments(const Client& client, Random& random) {
    for (const Document& document : kDocuments) {
        if (random.Chance(45)) {
            const std::string name = document.file;
            documents_.Add(
                {{"CLIENT", client.id},
                 {"Path", "C:\\Documents\\Clients\\" + client.id + "\\" + name},
                 {"Type", name.find('.') == std::string::npos ? "FLD" : name.substr(name.size() - 3)},
                 {"Description", document.description}});
        }
    }
}

void AttributeWriter::WriteBans(const Client& client, const World& world, Random& random) {
    for (const int caregiver : client.banned) {
        bans_.Add({{"CLIENT", client.id},
                   {"emp_id", world.CaregiverAt(caregiver).id},
                   {"Emp_name", world.CaregiverAt(caregiver).Name()},
                   {"Notes", random.Pick(kBanReasons)}});
    }
}

}  // namespace kv::demo
