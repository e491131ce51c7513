#include "clients/notes_text.h"

#include <algorithm>

#include "base/format.h"
#include "datastore/engine_error.h"

namespace kv {

namespace {

Document ClientPrint(const char* title, const PrintedClient& client) {
    constexpr double kTitlePoints = 14;
    Document document(title);
    document.style = {"Courier New", 10};
    TextStyle style;
    style.points = kTitlePoints;
    style.bold = true;
    document.Line(title, style).spaceAfter = 0.1;
    document.Line("     ID: " + client.id);
    document.Line("   Name: " + client.last + ", " + client.first);
    document.Line("Address: " + client.street);
    document.Line("         " + client.address2);
    document.Line("    Apt: " + client.apt);
    document.Line("   City: " + client.city);
    document.Line("  State: " + client.state);
    document.Line("    Zip: " + client.zip);
    document.Line("  Phone: " + FormatPhone(client.phone));
    return document;
}

void AddPart(Document& document, const char* heading, const std::string& text) {
    TextStyle bold;
    bold.bold = true;
    Paragraph& line = document.Line(heading, bold);
    line.spaceBefore = 0.15;
    line.keepWithNext = true;
    document.Line(text);
}

}  // namespace

std::string NotesText(std::string_view comments) {
    return rtf::IsRichText(comments) ? rtf::RichText(comments).PlainText() : std::string(comments);
}

rtf::RichText::Characters StampOf(const rtf::RichText::Characters& notes, Date now) {
    rtf::RichText::Characters stamp;
    if (!notes.empty() && notes.back().code != U'\n') {
        stamp.push_back({U'\n', {}});
    }
    const std::string line = "-------- " + FormatDate(now, "MMM/DD/YYYY  HH:NN Am/PM") + " -------";
    rtf::Marks marks;
    marks.isProtected = true;
    for (const char c : line) {
        stamp.push_back({static_cast<char32_t>(c), marks});
    }
    stamp.push_back({U'\n', {}});
    return stamp;
}

std::string MergeNotes(std::string_view old, std::string_view mine, std::string_view theirs) {
    using Characters = rtf::RichText::Characters;
    const Characters before = rtf::RichText(old).Shown();
    const Characters after = rtf::RichText(mine).Shown();
    rtf::RichText merged(theirs);
    const Characters there = merged.Shown();
    const auto [beforeAt, afterAt] = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    const auto same = beforeAt - before.begin();
    const auto most = std::min(before.end() - beforeAt, after.end() - afterAt);
    const auto tail =
        std::mismatch(before.rbegin(), before.rbegin() + most, after.rbegin()).first - before.rbegin();
    const auto removed = static_cast<std::ptrdiff_t>(before.size()) - same - tail;
    const Characters added(afterAt, after.end() - tail);

    const bool samePlace = static_cast<std::ptrdiff_t>(there.size()) >= same + removed &&
                           std::equal(before.begin(), before.begin() + same + removed, there.begin());
    if (samePlace) {
        Characters now(there.begin(), there.begin() + same);
        now.insert(now.end(), added.begin(), added.end());
        now.insert(now.end(), there.begin() + same + removed, there.end());
        if (merged.Update(now)) {
            return merged.Source();
        }
    }
    Characters line = added;
    if (!line.empty() && !there.empty() && there.back().code != U'\n') {
        line.insert(line.begin(), {U'\n', {}, {}});
    }
    merged.Append(line);
    return merged.Source();
}

bool KeepsStamps(std::string_view loaded, std::string_view stored) {
    const std::vector<std::string> before = rtf::RichText(loaded).ProtectedTexts();
    auto expected = before.begin();
    for (const std::string& stamp : rtf::RichText(stored).ProtectedTexts()) {
        expected += expected != before.end() && *expected == stamp ? 1 : 0;
    }
    return expected == before.end();
}

void CheckStamps(std::string_view loaded, std::string_view stored) {
    if (loaded == stored) {
        return;
    }
    if (rtf::RichText(loaded).ProtectedTexts() != rtf::RichText(stored).ProtectedTexts()) {
        throw EngineError(
            engine_error::kUpdateCancelled,
            "This action was cancelled by an associated object: the notes hold read-only text.");
    }
}

Document NotesPrint(const PrintedClient& client, std::string_view comments) {
    Document document = ClientPrint("Client Notes Information", client);
    AddPart(document, "Notes", NotesText(comments));
    return document;
}

Document DirectionsPrint(const PrintedClient& client, const std::string& picture,
                         const std::string& directions) {
    constexpr double kPictureIndent = 0.75;
    constexpr double kPictureWidth = 3;
    Document document = ClientPrint("Client Direction Information", client);
    if (!picture.empty()) {
        document.Line("");
        document.Add(Picture{picture, kPictureIndent, kPictureWidth});
    }
    AddPart(document, "Directions", directions);
    return document;
}

}  // namespace kv
