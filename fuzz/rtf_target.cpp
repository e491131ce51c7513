// Any bytes as notes: they are read without loss, an edit shows and stays when the notes are written and read
// again, and protected text stays. Behind a record separator (0x1E) stands an edit: where, how many
// characters it takes away, the looks of what it puts in their place, and that text.
#include <algorithm>

#include "base/text.h"
#include "clients/notes_text.h"
#include "datastore/engine_error.h"
#include "fuzz/target.h"

namespace kv {
namespace {

using rtf::RichText;

constexpr std::size_t kLongest = 4096;

bool SameText(const RichText::Characters& a, const RichText::Characters& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& x, const auto& y) {
        return x.code == y.code && (x.code == U'\n' || x.marks == y.marks);
    });
}

/// What an editor may put in: any characters but those that no text box holds.
RichText::Characters Typed(std::string_view text, std::uint8_t looks) {
    rtf::Marks marks;
    marks.bold = (looks & 1) != 0;
    marks.italic = (looks & 2) != 0;
    marks.underline = (looks & 4) != 0;
    RichText::Characters typed;
    for (const char32_t code : rtf::CodesOf(text))
        if (code == U'\n' || code == U'\t' || code >= U' ')
            typed.push_back({code, marks});
    return typed;
}

/// Rich text whose groups all close, the outermost last, without raw bytes: what is undamaged beyond doubt.
bool IsSound(std::string_view source) {
    int depth = 0;
    for (std::size_t i = 0; i < source.size(); ++i) {
        if (source[i] == '\\')
            ++i;
        else if (source[i] == '{' || source[i] == '}')
            depth += source[i] == '{' ? 1 : -1;
        if (depth <= 0 && i + 1 < source.size())
            return false;
    }
    return source.starts_with("{\\rtf") && depth == 0 && source.find("\\bin") == std::string_view::npos;
}

/// Is the second text the first one with something put in?
bool StandsIn(std::string_view before, std::string_view after) {
    const auto front =
        std::mismatch(before.begin(), before.end(), after.begin(), after.end()).first - before.begin();
    const auto back =
        std::mismatch(before.rbegin(), before.rend(), after.rbegin(), after.rend()).first - before.rbegin();
    return front + back >= static_cast<std::ptrdiff_t>(before.size());
}

void CheckWritten(const RichText& notes, const RichText::Characters& wanted) {
    Expect(SameText(notes.Shown(), wanted), "an edit does not show");
    Expect(SameText(RichText(notes.Source()).Shown(), wanted), "an edit is read back as something else");
}

std::string Unmarked(std::string_view source) {
    std::string text = ToUtf8(source);
    text = ReplaceAll(ReplaceAll(text, "\r\n", "\n"), "\r", "\n");
    return ReplaceAll(text, std::string_view("\0", 1), "\xEF\xBF\xBD");
}

void Edit(std::string_view source, FuzzInput input) {
    RichText notes(source);
    RichText::Characters shown = notes.Shown();
    const std::size_t from = std::min<std::size_t>(input.Byte(), shown.size());
    const std::size_t removed = std::min<std::size_t>(input.Byte(), shown.size() - from);
    const auto first = shown.begin() + static_cast<std::ptrdiff_t>(from);
    const std::uint8_t looks = input.Byte();
    const RichText::Characters typed = Typed(input.Rest(), looks);
    shown.insert(shown.erase(first, first + static_cast<std::ptrdiff_t>(removed)), typed.begin(),
                 typed.end());
    const auto stamps = notes.ProtectedTexts();
    if (notes.Update(shown)) {
        CheckWritten(notes, shown);
        Expect(notes.ProtectedTexts() == stamps, "an edit altered protected text");
    } else {
        Expect(notes.Source() == source, "a refused edit changed the notes");
    }
}

void Stamp(std::string_view source) {
    RichText notes(source);
    RichText::Characters shown = notes.Shown();
    const RichText::Characters stamp = StampOf(shown, Date::FromCivil(2026, 3, 4, 5, 6));
    notes.Append(stamp);
    shown.insert(shown.end(), stamp.begin(), stamp.end());
    CheckWritten(notes, shown);
    if (IsSound(source))
        Expect(StandsIn(source, notes.Source()), "a stamp changed what stood around it");
    bool refused = false;
    try {
        CheckStamps(source, notes.Source());
    } catch (const EngineError& error) {
        refused = error.Number() == engine_error::kUpdateCancelled;
    }
    Expect(refused, "a stamp that came in between was not noticed");
}

}  // namespace
}  // namespace kv

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, std::min(size, kv::kLongest));
    const std::string_view source = input.Part('\x1E');
    const kv::rtf::RichText notes(source);
    Expect(notes.Source() == source, "reading and writing lost bytes");
    for (const auto& character : notes.Shown())
        Expect(character.code != 0 && character.code <= 0x10FFFF && (character.code & 0xFFFFF800) != 0xD800,
               "a shown character that is none");
    if (!kv::rtf::IsRichText(source))
        Expect(notes.PlainText() == kv::Unmarked(source), "a plain text is read as another");
    const std::string plain = kv::NotesText(source);
    Expect(plain == (kv::rtf::IsRichText(source) ? notes.PlainText() : source), "the plain text is another");
    kv::CheckStamps(source, source);
    kv::NotesPrint({}, source);
    kv::Edit(source, input);
    kv::Stamp(source);
    return 0;
}
