#include "tool/demo/texts.h"

#include "base/format.h"

namespace kv::demo {
namespace {

constexpr const char* kHead = R"({\rtf1\ansi\deff0{\fonttbl{\f0 Arial;}}\viewkind4\uc1\pard\f0\fs20 )";

}  // namespace

std::string RichText(const std::string& text) {
    return kHead + text + "\\par\r\n}\r\n";
}

std::string NoteJournal(Date now, Random& random) {
    std::string journal = kHead;
    double daysAgo = static_cast<double>(random.Between(60, 160));
    long note = random.Below(static_cast<long>(std::size(kClientNotes)));
    for (long entries = random.Between(1, 3); entries > 0; --entries) {
        const Date when =
            now.AddDays(-daysAgo).DayOnly().AddMinutes(static_cast<double>(random.Between(540, 1020)));
        journal += "\\protect -------- " + FormatDate(when, "MMM/DD/YYYY  HH:NN Am/PM") +
                   " -------\\protect0\\par\r\n";
        journal += kClientNotes[note++ % static_cast<long>(std::size(kClientNotes))];
        journal += "\\par\r\n";
        daysAgo /= 3;
    }
    return journal + "}\r\n";
}

}  // namespace kv::demo
