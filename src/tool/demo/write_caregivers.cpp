#include <fmt/format.h>

#include "tool/demo/lists.h"
#include "tool/demo/model.h"
#include "tool/demo/people.h"
#include "tool/demo/rates.h"
#include "tool/demo/rows.h"
#include "tool/demo/texts.h"

namespace kv::demo {
namespace {

class CaregiverWriter {
  public:
    CaregiverWriter(Database& work, const World& world)
        : today_(world.calendar.today),
          employees_(work, "Employee"),
          rates_(work, "emprate"),
          misc_(work, "emp_misc"),
          locations_(work, "emp_locations"),
          personnel_(work, "emp_personnel"),
          required_(work, "Emp_required") {}

    void Write(int place, const Caregiver& who, Random random) {
        WriteEmployee(who, random);
        WriteRates(place, who);
        for (const int skill : who.skills) {
            misc_.Add({{"emp", who.id},
                       {"area", "SKI"},
                       {"ID", kSkills[skill].code},
                       {"Description", kSkills[skill].description}});
        }
        for (const int district : who.districts) {
            const char* name = kDistricts[district].description;
            locations_.Add({{"emp", who.id}, {"district", name}, {"BORO", name}});
        }
        WriteExtras(who, random);
        WriteRequired(who, random);
    }

  private:
    void WriteEmployee(const Caregiver& who, Random& random) {
        std::string languages;
        for (const int language : who.languages) {
            languages += kLanguages[language].code;
        }
        const auto language = [&](std::size_t i) {
            return i < who.languages.size() ? kLanguages[who.languages[i]].code : "";
        };
        const Rates pay = PayRates(who, UsualVisitType(who));
        const bool licensed = who.discipline >= 3;
        employees_.Add({{"emp_id", who.id},
                        {"LastName", who.last},
                        {"FirstName", who.first},
                        {"Street", who.street},
                        {"Address2", ""},
                        {"City", who.town},
                        {"State", kState},
                        {"Zip", who.zip},
                        {"Phone", who.phone},
                        {"pager", random.Chance(8) ? MakePhone(random.Below(1800)) : ""},
                        {"cellphone", random.Chance(80) ? MakePhone(random.Below(1800)) : ""},
                        {"Fax", ""},
                        {"Email", random.Chance(60) ? MakeEmail(who.first, who.last, random) : ""},
                        {"SS", MakeSocialNumber(random)},
                        {"dept", kCaregiverGroups[who.group].description},
                        {"Disp", kDisciplines[who.discipline].code},
                        {"disp_level", who.discipline + 1},
                        {"tot_lang", languages},
                        {"emlang1", language(0)},
                        {"emlang2", language(1)},
                        {"emlang3", language(2)},
                        {"SEX", who.female ? "F" : "M"},
                        {"EMP_TYPE", who.type},
                        {"live_in", who.liveIn},
                        {"t_code", std::string(1, who.status)},
                        {"t_date", DayOrNull(who.endDay)},
                        {"hrsper_week", who.hoursWanted},
                        {"EXP_CYMMDD", licensed ? DayOrNull(today_ + random.Between(-40, 700)) : Value()},
                        {"em_comment", random.Chance(35) ? RichText(random.Pick(kCaregiverNotes)) : ""},
                        {"PAY_MILEAGE", who.payMileage},
                        {"PAY_ERRAND", who.payErrand},
                        {"PAY_EXPENSES", who.payExpenses},
                        {"rate1", pay.shift[0]},
                        {"rate2", pay.shift[1]},
                        {"rate3", pay.shift[2]},
                        {"rate4", pay.shift[3]},
                        {"rate5", pay.shift[4]},
                        {"rate6", pay.shift[5]},
                        {"liveinrate", pay.liveIn}});
    }

    void WriteRates(int place, const Caregiver& who) {
        for (int type = 0; type < static_cast<int>(std::size(kVisitTypes)); ++type) {
            if (HasOwnPayRow(place, who, type)) {
                const Rates pay = PayRates(who, type);
                rates_.Add({{"employee", who.id},
                            {"client", ""},
                            {"visittype", kVisitTypes[type].code},
                            {"method", kVisitTypes[type].method},
                            {"rate1", pay.shift[0]},
                            {"rate2", pay.shift[1]},
                            {"rate3", pay.shift[2]},
                            {"rate4", pay.shift[3]},
                            {"rate5", pay.shift[4]},
                            {"rate6", pay.shift[5]},
                            {"liveinrate", pay.liveIn}});
            }
        }
    }

    void WriteExtras(const Caregiver& who, Random& random) {
        constexpr const char* kValues[][3] = {
            {"S", "M", "L"}, {"Yes", "No", "Shared"}, {"Mornings", "Evenings", "Short trips"}};
        for (std::size_t i = 0; i < std::size(kCaregiverExtras); ++i) {
            if (random.Chance(40)) {
                personnel_.Add({{"emp_id", who.id},
                                {"ID", static_cast<long>(i) + 1},
                                {"Description", kCaregiverExtras[i]},
                                {"input_desc", "Equals"},
                                {"input_text", random.Pick(kValues[i])}});
            }
        }
    }

    void WriteRequired(const Caregiver& who, Random& random) {
        long id = 0;
        for (const Requirement& requirement : kCaregiverRequirements) {
            ++id;
            if (!random.Chance(65)) {
                continue;
            }
            // Now and then one has run out.
            const Date expires = Date(static_cast<double>(today_ + random.Between(-20, 330)));
            const Date typed = expires.AddMonths(-requirement.months);
            required_.Add({{"EMP_ID", who.id},
                           {"ID", id},
                           {"Description", requirement.description},
                           {"months", requirement.months},
                           {"input_date", typed},
                           {"input_desc", requirement.months > 0 ? "Certified on" : "Expires on"},
                           {"exp_date", typed.AddMonths(requirement.months)}});
        }
    }

    long today_;
    TableFiller employees_, rates_, misc_, locations_, personnel_, required_;
};

}  // namespace

void WriteCaregivers(Database& work, const World& world, Random random) {
    CaregiverWriter writer(work, world);
    for (std::size_t i = 0; i < world.caregivers.size(); ++i) {
        writer.Write(static_cast<int>(i), world.caregivers[i], random.Fork(i));
    }
    TableFiller willWork(work, "Emp_willwork");
    for (const WillWork& row : world.willWork) {
        willWork.Add({{"emp_id", world.CaregiverAt(row.caregiver).id},
                      {"st_date", DayOrNull(row.day)},
                      {"St_time", TimeOf(row.from)},
                      {"END_TIME", TimeOf(row.to)}});
    }
}

}  // namespace kv::demo
