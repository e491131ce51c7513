#include "tool/demo/todo.h"

#include <fmt/format.h>

#include "base/format.h"
#include "tool/demo/lists.h"
#include "tool/demo/texts.h"

namespace kv::demo {
namespace {

constexpr const char* kCategories[] = {"Activation Cycle", "Appointments", "Reminders", "Tasks"};
constexpr long kSeriesBehind = 56;
constexpr long kSeriesAhead = 90;

std::string DayName(long day, const char* pattern) {
    return FormatDate(Date(static_cast<double>(day)), pattern);
}

/// The pattern of a series: every third day, a weekday of each second week, a day of each month.
struct Series {
    const char* type;
    std::string parameters[2];
    std::string text;
    std::vector<long> days;  ///< after the first one
};

Series EveryThirdDay(long first, long last) {
    Series series{"D", {"3", ""}, "Every 3 day(s)", {}};
    for (long day = first + 3; day <= last; day += 3) {
        series.days.push_back(day);
    }
    return series;
}

Series EverySecondWeek(long first, long last) {
    Series series{"W", {"2", DayName(first, "ddd")}, "Every 2 week(s) on " + DayName(first, "dddd"), {}};
    // A block of seven days that begins by the last day is looked at whole, so the last item may lie behind
    // the end.
    for (long block = first + 8; block <= last; block += 14) {
        series.days.push_back(block + 6);
    }
    return series;
}

Series EveryMonth(long first, long last) {
    const int dayOfMonth = Date(static_cast<double>(first)).Civil().day;
    Series series{
        "M", {std::to_string(dayOfMonth), "1"}, fmt::format("Day {} of every 1 month(s)", dayOfMonth), {}};
    for (long day = first + 1; day <= last; ++day) {
        if (Date(static_cast<double>(day)).Civil().day == dayOfMonth) {
            series.days.push_back(day);
        }
    }
    return series;
}

}  // namespace

ToDoWriter::ToDoWriter(Database& work, const World& world)
    : work_(work),
      world_(world),
      today_(world.calendar.today),
      tasks_(work, "tasks"),
      series_(work, "ongoing") {}

ToDoWriter::Content ToDoWriter::MakeContent(Random& random) const {
    const User& creator = kUsers[random.Below(kActiveUsers)];
    const bool office = random.Chance(8);
    Content content{};
    content.creator = creator.id;
    content.creatorName = creator.name;
    content.assigned = office ? "All" : kUsers[random.Below(kActiveUsers)].id;
    content.subject = random.Pick(kToDoSubjects);
    content.action = random.Pick(kToDoActions);
    content.priority = !office && random.Chance(15) ? "Private" : "Public";
    content.memo = random.Chance(30) ? random.Pick(kEventNotes) : "";
    content.start = static_cast<int>(random.Between(32, 66)) * 15;
    content.alarm = random.Chance(30);
    return content;
}

long ToDoWriter::Add(const Item& item, const Content& content, bool completed) {
    return tasks_.Add({{"UserID", content.creator},
                       {"employee_name", content.creatorName},
                       {"assigned", content.assigned},
                       {"Subject", content.subject},
                       {"Start_Date", DayOrNull(item.day)},
                       {"START_TIME", TimeOf(content.start)},
                       {"END_TIME", TimeOf(content.start + 15)},
                       {"Category", item.category},
                       {"priority", content.priority},
                       {"Status", content.action},
                       {"Reminder", content.alarm ? 1 : 0},
                       {"reminder_date", content.alarm ? DayOrNull(item.day) : Value()},
                       {"reminder_time", content.alarm ? Value(TimeOf(content.start - 10)) : Value()},
                       {"Memo", content.memo},
                       {"completed", completed},
                       {"CLIENT", item.client},
                       {"emp_id", item.caregiver},
                       {"contact", item.referral},
                       {"LoggingSeq", item.event},
                       {"OnGoing_Seq", item.series},
                       {"Ongoing_Desc", item.seriesText},
                       {"OnGoingOriginal", item.original}});
}

void ToDoWriter::AddReminder(const Client& client, const std::string& caregiver, long event, long day,
                             Random& random) {
    Item item;
    item.day = day + random.Between(1, 30);
    item.client = client.id;
    item.caregiver = caregiver;
    item.event = event;
    item.category = "Reminders";
    const Content content = MakeContent(random);
    Add(item, content, item.day < today_ && random.Chance(80));
}

void ToDoWriter::WriteClientItems(int place, Random random) {
    const Client& client = world_.clients[static_cast<std::size_t>(place)];
    for (long n = random.Below(3); n > 0; --n) {
        Item item;
        item.day = today_ - 40 + random.Below(80);
        item.client = client.id;
        item.category = random.Pick(kCategories);
        const Content content = MakeContent(random);
        Add(item, content, item.day < today_ && random.Chance(75));
    }
    if (place % 12 == 0) {
        AddSeries(client, place / 12 % 3, random);
    }
}

void ToDoWriter::AddSeries(const Client& client, int kind, Random& random) {
    long first = today_ - random.Between(kSeriesBehind - 10, kSeriesBehind);
    if (kind == 2) {
        first -= Date(static_cast<double>(first)).Civil().day > 28 ? 5 : 0;  // a day that every month has
    }
    const long last = first + kSeriesBehind + kSeriesAhead;
    const Series series = kind == 0   ? EverySecondWeek(first, last)
                          : kind == 1 ? EveryThirdDay(first, last)
                                      : EveryMonth(first, last);
    Item item;
    item.day = first;
    item.client = client.id;
    item.series = series_.Add({{"Type", series.type},
                               {"parameter1", series.parameters[0]},
                               {"parameter2", series.parameters[1]},
                               {"parameter3", ""},
                               {"Start_Date", DayOrNull(first)},
                               {"END_DATE", DayOrNull(last)}});
    item.seriesText = series.text;
    const Content content = MakeContent(random);
    const long original = Add(item, content, true);
    work_.Execute(Sql("update tasks set OnGoingOriginal = {} where sequence = {}", original, original));
    item.original = Value(original);
    for (const long day : series.days) {
        item.day = day;
        Add(item, content, day < today_ && random.Chance(85));
    }
}

void ToDoWriter::WriteOfficeItems(Random random) {
    for (const Caregiver& who : world_.caregivers) {
        if (random.Chance(10)) {
            Item item;
            item.day = today_ - 20 + random.Below(50);
            item.caregiver = who.id;
            Add(item, MakeContent(random), item.day < today_ && random.Chance(70));
        }
    }
    for (long referral = 1; referral <= 6; ++referral) {
        Item item;
        item.day = today_ + random.Below(40);
        item.referral = referral;
        item.category = "Appointments";
        Add(item, MakeContent(random), false);
    }
}

}  // namespace kv::demo
