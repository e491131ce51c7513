#include "clients/client_record.h"

#include <cstdlib>

#include "base/format.h"
#include "base/text.h"
#include "clients/client_list.h"

namespace kv {

namespace {

struct StatusName {
    std::string_view code;
    std::string_view word;
};

constexpr std::array kStatusNames = {
    StatusName{"A", "Active"},    StatusName{"S", "Suspended"}, StatusName{"C", "Closed"},
    StatusName{"Z", "Potential"}, StatusName{"D", "Deceased"},
};

template <std::size_t Count>
constexpr std::array<bool, Count> AllBut(std::initializer_list<std::size_t> closed) {
    std::array<bool, Count> open{};
    open.fill(true);
    for (const std::size_t index : closed) {
        open[index] = false;
    }
    return open;
}

constexpr auto kClientImages = AllBut<kSectionCount>({});
constexpr auto kPotentialImages = AllBut<kSectionCount>({2, 4});
constexpr auto kTemplateImages = AllBut<kSectionCount>({2, 3, 4, 8, 12});
constexpr auto kClientParts = AllBut<kPartCount>({});
constexpr auto kTemplateParts = AllBut<kPartCount>({1, 2, 3});

Date DateOrZero(const Value& value) {
    return value.IsNull() ? Date() : value.ToDate();
}

long DaysUnlessAbove(Date from, Date to, long most) {
    const long days = DaysBetween(from, to);
    return std::labs(days) > most ? 0 : days;
}

bool IsTemplateRow(const Recordset& row) {
    return row.Get("ISTEMPLATE").IsTrue();
}

}  // namespace

ClientKind KindOfClient(const Recordset& row) {
    if (IsTemplateRow(row)) {
        return ClientKind::Template;
    }
    return EqualsNoCase(row.Text("CASESTATCD"), "Z") ? ClientKind::Potential : ClientKind::Client;
}

std::string StatusWord(std::string_view caseStatCd, bool isTemplate) {
    for (const StatusName& each : kStatusNames) {
        if (EqualsNoCase(each.code, caseStatCd)) {
            return std::string(isTemplate && each.code == "A" ? "Template" : each.word);
        }
    }
    return {};
}

long NumDays(const Value& firstContact, const Value& startOfCare) {
    constexpr long kMost = 2000;
    return DaysUnlessAbove(DateOrZero(firstContact), DateOrZero(startOfCare), kMost);
}

long NumActiveDays(const Value& startOfCare, const Value& endOfCare, Date today) {
    constexpr long kMost = 4000;
    // Care that has ended counts on to today and not to its end, and so does care without an end: wanted as
    // it is.
    const Date end = DateOrZero(endOfCare);
    return DaysUnlessAbove(DateOrZero(startOfCare), end < today ? today : end, kMost);
}

StatusBarTexts StatusBarOf(const Recordset& list) {
    StatusBarTexts texts;
    if (!HasClient(list)) {
        return texts;
    }
    texts.lastChange += list.Text("User_Id");
    const Value changed = list.Get("status_date");
    if (!changed.IsNull()) {
        texts.dateTime += FormatDate(changed.ToDate(), "MMM/DD/YYYY HH:NN");
    }
    texts.position = FormatNumber(static_cast<double>(list.AbsolutePosition() + 1), "##,##0");
    texts.count = FormatNumber(static_cast<double>(list.RecordCount()), "##,##0");
    return texts;
}

ToolbarButtons ClientToolbar(const Session& session, bool listHasRows) {
    constexpr std::size_t kExit = 1;
    constexpr std::size_t kNew = 7;
    constexpr std::size_t kDelete = 8;
    constexpr std::size_t kSave = 9;
    constexpr std::size_t kHelp = 14;
    ToolbarButtons enabled{};
    enabled.fill(listHasRows);
    enabled[kExit] = true;
    enabled[kHelp] = true;
    enabled[kNew] = session.CanAdd;
    enabled[kDelete] = listHasRows && session.CanDelete;
    enabled[kSave] = listHasRows && session.CanSave;
    return enabled;
}

ClientSections SectionsOf(ClientKind kind, const ClientRights& rights) {
    constexpr std::size_t kBillRates = 1;
    constexpr std::size_t kDocumentedEvents = 3;
    ClientSections sections{kClientImages, kClientParts, true};
    if (kind == ClientKind::Template) {
        sections = {kTemplateImages, kTemplateParts, false};
    } else if (kind == ClientKind::Potential) {
        sections.images = kPotentialImages;
    }
    sections.images[kBillRates] = sections.images[kBillRates] && rights.billRates;
    sections.images[kDocumentedEvents] = sections.images[kDocumentedEvents] && rights.documentedEvents;
    return sections;
}

ClientView DescribeClient(const Session& session, const Recordset& list, const ClientRights& rights) {
    ClientView view;
    view.statusBar = StatusBarOf(list);
    if (!HasClient(list)) {
        view.sections.parts[0] = true;
        return view;
    }
    view.id = list.Text("CLIENT");
    view.kind = KindOfClient(list);
    view.statusWord = StatusWord(list.Text("CASESTATCD"), IsTemplateRow(list));
    view.potentialStatus = list.Text("potientalstatus");
    view.potentialButtons = view.kind == ClientKind::Potential;
    view.numDays = NumDays(list.Get("First_contact"), list.Get("STARTSERVC"));
    view.numActiveDays = NumActiveDays(list.Get("STARTSERVC"), list.Get("CASEEXPDAT"), session.clock.Today());
    view.sections = SectionsOf(view.kind, rights);
    view.notes = list.Text("Comments");
    return view;
}

}  // namespace kv
