#include "clients/notes_text.h"

#include <array>
#include <charconv>
#include <map>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include <unicode/ucnv.h>
#include <unicode/utf8.h>

#include "base/text.h"

namespace kv {

namespace {

constexpr int kWestern = 1252;
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

const std::unordered_map<std::string_view, std::string_view> kWordTexts = {
    {"par", "\n"},        {"line", "\n"},       {"sect", "\n"},          {"page", "\n"},
    {"row", "\n"},        {"nestrow", "\n"},    {"tab", "\t"},           {"cell", "\t"},
    {"nestcell", "\t"},   {"emdash", "\u2014"}, {"endash", "\u2013"},    {"bullet", "\u2022"},
    {"lquote", "\u2018"}, {"rquote", "\u2019"}, {"ldblquote", "\u201C"}, {"rdblquote", "\u201D"},
    {"emspace", " "},     {"enspace", " "},     {"qmspace", " "},
};

/// Groups that begin with these hold no text of the notes.
const std::unordered_set<std::string_view> kPassedOver = {
    "fonttbl", "colortbl", "stylesheet", "info",      "pict",       "object",
    "header",  "headerl",  "headerr",    "headerf",   "footer",     "footerl",
    "footerr", "footerf",  "fldinst",    "filetbl",   "listtable",  "revtbl",
    "rsidtbl", "xmlnstbl", "generator",  "themedata", "nonshppict", "listoverridetable",
};

const std::map<int, int> kCodePageOfCharset = {
    {77, 10000}, {128, 932},  {129, 949},  {130, 1361}, {134, 936},  {136, 950},
    {161, 1253}, {162, 1254}, {163, 1258}, {177, 1255}, {178, 1256}, {186, 1257},
    {204, 1251}, {222, 874},  {238, 1250}, {254, 437},  {255, 850},
};

bool IsDoubleByte(int codePage) {
    return codePage == 932 || codePage == 936 || codePage == 949 || codePage == 950 || codePage == 1361;
}

std::string ConverterName(int codePage) {
    constexpr int kMacintosh = 10000;
    constexpr int kUtf8 = 65001;
    if (codePage == kMacintosh) {
        return "macintosh";
    }
    return codePage == kUtf8 ? "UTF-8" : "cp" + std::to_string(codePage);
}

std::string Decode(const std::string& bytes, int codePage) {
    std::string text(bytes.size() * 4 + 4, '\0');
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length =
        ucnv_convert("UTF-8", ConverterName(codePage).c_str(), text.data(), static_cast<int32_t>(text.size()),
                     bytes.data(), static_cast<int32_t>(bytes.size()), &status);
    if (U_FAILURE(status)) {
        return codePage == kWestern ? ToUtf8(bytes) : Decode(bytes, kWestern);
    }
    text.resize(static_cast<std::size_t>(length));
    return ReplaceAll(text, "\x1A", kReplacement);  // what some code pages give for a byte without meaning
}

std::string Utf8Of(long code) {
    std::array<char, U8_MAX_LENGTH> buffer{};
    int32_t length = 0;
    U8_APPEND_UNSAFE(buffer.data(), length, static_cast<UChar32>(code));
    return {buffer.data(), static_cast<std::size_t>(length)};
}

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// What a group inherits and what ends with it.
struct GroupState {
    bool passedOver = false;
    bool fontTable = false;
    int unicodeStandIns = 1;  ///< \uc: how many characters stand in for one \u
    int font = -1;
};

struct ControlWord {
    std::string_view name;
    std::optional<long> number;
};

/// Reads rich text from front to end; whatever is damaged is passed over, and what follows is read on.
class RichTextReader {
  public:
    explicit RichTextReader(std::string_view text) : text_(text) {}

    std::string Read() {
        while (at_ < text_.size() && !ended_) {
            ReadNext();
        }
        FlushBytes();
        FlushSurrogate();
        return ToUtf8(out_);
    }

  private:
    GroupState& Group() { return groups_.back(); }

    void ReadNext() {
        const char c = text_[at_++];
        switch (c) {
            case '{':
                FlushBytes();
                standInsLeft_ = 0;
                groups_.push_back(Group());
                break;
            case '}':
                CloseGroup();
                break;
            case '\\':
                ReadControl();
                break;
            case '\r':
            case '\n':
            case '\0':
                break;
            default:
                ReadCharacter(c);
        }
    }

    void CloseGroup() {
        FlushBytes();
        standInsLeft_ = 0;
        groups_.pop_back();
        // The outermost group is the document; what stands behind it is not.
        constexpr std::size_t kOutside = 1;
        if (groups_.size() <= kOutside) {
            ended_ = true;
        }
    }

    void ReadCharacter(char c) {
        const std::size_t begin = at_ - 1;
        while (at_ < text_.size() && U8_IS_TRAIL(static_cast<uint8_t>(text_[at_])) &&
               static_cast<uint8_t>(c) >= 0x80) {
            ++at_;
        }
        Literal(text_.substr(begin, at_ - begin));
    }

    /// A character of the text, or one that stands in for a \u before it.
    void Literal(std::string_view character) {
        if (standInsLeft_ > 0) {
            --standInsLeft_;
        } else if (!bytes_.empty() && IsDoubleByte(CodePage()) && character.size() == 1) {
            bytes_ += character;  // the second half of a double byte may be a plain letter
        } else {
            Append(character);
        }
    }

    void ReadControl() {
        if (at_ >= text_.size()) {
            return;
        }
        if (IsLetter(text_[at_])) {
            RunWord(ReadWord());
            return;
        }
        const char symbol = text_[at_++];
        switch (symbol) {
            case '\'':
                ReadHexByte();
                break;
            case '*':
                Group().passedOver = true;
                break;
            case '~':
                Literal(" ");
                break;
            case '_':
                Literal("-");
                break;
            case '\\':
            case '{':
            case '}':
                Literal(std::string_view(&symbol, 1));
                break;
            case '\r':
            case '\n':
                Append("\n");
                break;
            default:
                standInsLeft_ -= standInsLeft_ > 0 ? 1 : 0;  // an optional hyphen and the like
        }
    }

    void ReadHexByte() {
        constexpr int kHex = 16;
        const std::string_view digits = text_.substr(at_, 2);
        unsigned byte = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), byte, kHex);
        if (error != std::errc() || end != digits.data() + 2) {
            return;
        }
        at_ += 2;
        if (standInsLeft_ > 0) {
            --standInsLeft_;
        } else if (!Group().passedOver && byte != 0) {
            bytes_ += static_cast<char>(byte);
        }
    }

    ControlWord ReadWord() {
        const std::size_t begin = at_;
        while (at_ < text_.size() && IsLetter(text_[at_])) {
            ++at_;
        }
        ControlWord word{text_.substr(begin, at_ - begin), std::nullopt};
        std::size_t end = at_;
        if (end < text_.size() && text_[end] == '-') {
            ++end;
        }
        if (end < text_.size() && IsDigit(text_[end])) {
            while (end < text_.size() && IsDigit(text_[end])) {
                ++end;
            }
            long number = 0;  // stays 0 where the digits are too many
            std::from_chars(text_.data() + at_, text_.data() + end, number);
            word.number = number;
            at_ = end;
        }
        if (at_ < text_.size() && text_[at_] == ' ') {
            ++at_;
        }
        return word;
    }

    void RunWord(const ControlWord& word) {
        standInsLeft_ = 0;  // a word is no stand-in; counting it would lose text of sloppy writers
        const long number = word.number.value_or(0);
        if (word.name == "bin") {
            at_ += std::min(static_cast<std::size_t>(std::max(number, 0L)), text_.size() - at_);
        } else if (kPassedOver.contains(word.name)) {
            Group().passedOver = true;
            Group().fontTable = word.name == "fonttbl";
        } else if (word.name == "u") {
            AppendUnicode(number);
        } else if (word.name == "uc") {
            Group().unicodeStandIns = static_cast<int>(std::clamp(number, 0L, 99L));
        } else if (const auto text = kWordTexts.find(word.name); text != kWordTexts.end()) {
            Append(text->second);
        } else {
            RunCodePageWord(word.name, static_cast<int>(std::clamp(number, -1L, 99999L)));
        }
    }

    void RunCodePageWord(std::string_view name, int number) {
        FlushBytes();
        if (name == "ansicpg") {
            codePage_ = number > 0 ? number : kWestern;
        } else if (name == "mac") {
            codePage_ = 10000;
        } else if (name == "pc") {
            codePage_ = 437;
        } else if (name == "pca") {
            codePage_ = 850;
        } else if (name == "deff") {
            defaultFont_ = number;
        } else if (name == "plain") {
            Group().font = defaultFont_;
        } else if (name == "f") {
            Group().font = number;
        } else if (name == "fcharset" && Group().fontTable) {
            const auto page = kCodePageOfCharset.find(number);
            if (page != kCodePageOfCharset.end()) {
                fontCodePages_[Group().font] = page->second;
            }
        }
    }

    int CodePage() {
        const auto page = fontCodePages_.find(Group().font);
        return page == fontCodePages_.end() ? codePage_ : page->second;
    }

    void AppendUnicode(long number) {
        standInsLeft_ = Group().unicodeStandIns;
        FlushBytes();
        const long code = number < 0 ? number + 0x10000 : number;  // written as a signed 16-bit number
        if (Group().passedOver || code <= 0 || code > 0x10FFFF) {
            return;
        }
        if (U16_IS_LEAD(code)) {
            FlushSurrogate();
            leadSurrogate_ = code;
        } else if (U16_IS_TRAIL(code)) {
            const long lead = std::exchange(leadSurrogate_, 0);
            out_ += lead == 0 ? std::string(kReplacement) : Utf8Of(U16_GET_SUPPLEMENTARY(lead, code));
        } else {
            FlushSurrogate();
            out_ += Utf8Of(code);
        }
    }

    void Append(std::string_view text) {
        FlushBytes();
        if (!Group().passedOver) {
            FlushSurrogate();
            out_ += text;
        }
    }

    void FlushBytes() {
        if (!bytes_.empty()) {
            FlushSurrogate();
            out_ += Decode(bytes_, CodePage());
            bytes_.clear();
        }
    }

    void FlushSurrogate() {
        if (leadSurrogate_ != 0) {
            out_ += kReplacement;
            leadSurrogate_ = 0;
        }
    }

    std::string_view text_;
    std::size_t at_ = 0;
    bool ended_ = false;
    std::string out_;
    std::vector<GroupState> groups_{GroupState{}};
    std::string bytes_;  ///< \'hh in a row: a code page may need two for a character
    long leadSurrogate_ = 0;
    int standInsLeft_ = 0;
    int codePage_ = kWestern;
    int defaultFont_ = -1;
    std::map<int, int> fontCodePages_;
};

}  // namespace

bool IsRichText(std::string_view comments) {
    return TrimView(comments).starts_with("{\\rtf");
}

std::string NotesText(std::string_view comments) {
    return IsRichText(comments) ? RichTextReader(TrimView(comments)).Read() : std::string(comments);
}

}  // namespace kv
