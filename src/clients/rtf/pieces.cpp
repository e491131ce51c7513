#include "clients/rtf/pieces.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include "base/text.h"
#include "clients/rtf/code_pages.h"

namespace kv::rtf {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

const std::unordered_map<std::string_view, char32_t> kWordTexts = {
    {"par", U'\n'},        {"line", U'\n'},    {"sect", U'\n'},    {"page", U'\n'},     {"row", U'\n'},
    {"nestrow", U'\n'},    {"tab", U'\t'},     {"cell", U'\t'},    {"nestcell", U'\t'}, {"emdash", 0x2014},
    {"endash", 0x2013},    {"bullet", 0x2022}, {"lquote", 0x2018}, {"rquote", 0x2019},  {"ldblquote", 0x201C},
    {"rdblquote", 0x201D}, {"emspace", U' '},  {"enspace", U' '},  {"qmspace", U' '},
};

/// Groups that begin with these hold no text of the notes.
const std::unordered_set<std::string_view> kPassedOver = {
    "fonttbl", "colortbl", "stylesheet", "info",      "pict",       "object",
    "header",  "headerl",  "headerr",    "headerf",   "footer",     "footerl",
    "footerr", "footerf",  "fldinst",    "filetbl",   "listtable",  "revtbl",
    "rsidtbl", "xmlnstbl", "generator",  "themedata", "nonshppict", "listoverridetable",
};

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// What a group inherits and what ends with it.
struct GroupState {
    Marks marks;
    Looks looks;
    bool passedOver = false;
    bool fontTable = false;
    int standIns = 1;  ///< \uc
    int font = -1;
};

struct ControlWord {
    std::string_view name;
    std::optional<long> number;
};

class Reader {
  public:
    explicit Reader(std::string_view text) : text_(text) {}

    Pieces Read() {
        at_ = std::min(text_.find('{'), text_.size());
        while (at_ < text_.size() && !ended_) {
            begin_ = at_;
            ReadNext();
        }
        Settle();
        const std::size_t end = ended_ ? at_ - 1 : at_;
        Keep(end);
        pieces_.atFirst = PieceOf(ended_ ? last_ : Group());
        const std::size_t before = pieces_.all.size();
        Keep(text_.size());
        pieces_.behindFirst = pieces_.all.size() - before;
        return std::move(pieces_);
    }

  private:
    GroupState& Group() { return groups_.back(); }

    static Piece PieceOf(const GroupState& group) {
        Piece piece;
        piece.marks = group.marks;
        piece.looks = group.looks;
        piece.standIns = group.standIns;
        return piece;
    }

    /// Keeps the source up to there as it is.
    void Keep(std::size_t end) {
        if (end > kept_) {
            pieces_.all.push_back({std::string(text_.substr(kept_, end - kept_)), 0, {}, {}, 1});
            kept_ = end;
        }
    }
    /// Shows characters that the source from `begin` up to here stands for.
    void Show(const std::u32string& codes, std::size_t begin, std::size_t end) {
        if (Group().passedOver) {
            return;
        }
        Keep(begin);
        for (const char32_t code : codes) {
            Piece piece = PieceOf(Group());
            piece.code = code == 0 ? kReplacement : code;
            piece.source = std::string(text_.substr(kept_, end - kept_));
            kept_ = end;
            pieces_.all.push_back(std::move(piece));
        }
    }
    void Show(char32_t code) { Show(std::u32string(1, code), begin_, at_); }

    /// A stand-in belongs to the escape before it.
    void TakeStandIn() {
        --standInsLeft_;
        if (lead_ == 0 && !pieces_.all.empty() && pieces_.all.back().IsShown() && kept_ == begin_) {
            pieces_.all.back().source += text_.substr(begin_, at_ - begin_);
            kept_ = at_;
        }
    }

    void ReadNext() {
        const char c = text_[at_++];
        switch (c) {
            case '{':
                Settle();
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
        Settle();
        standInsLeft_ = 0;
        last_ = Group();
        groups_.pop_back();
        // The outermost group is the document; what stands behind it is not.
        constexpr std::size_t kOutside = 1;
        if (groups_.size() <= kOutside) {
            ended_ = true;
        }
    }

    void ReadCharacter(char c) {
        while (at_ < text_.size() && U8_IS_TRAIL(static_cast<uint8_t>(text_[at_])) &&
               static_cast<uint8_t>(c) >= 0x80) {
            ++at_;
        }
        Literal(text_.substr(begin_, at_ - begin_));
    }

    /// A character of the text, or one that stands in for a \u before it.
    void Literal(std::string_view character) {
        if (standInsLeft_ > 0) {
            TakeStandIn();
        } else if (!bytes_.empty() && character.size() == 1) {
            AddByte(character[0]);  // the second half of a double byte may be a plain letter
        } else {
            Settle();
            Show(CodesOf(character), begin_, at_);
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
                PassOver();
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
                Settle();
                Show(U'\n');
                break;
            default:
                if (standInsLeft_ > 0) {
                    TakeStandIn();  // an optional hyphen and the like
                }
        }
    }

    /// What the group holds is none of the notes. The document's own group always is: a mark that strayed
    /// there would hide all that follows.
    void PassOver() {
        constexpr std::size_t kDocument = 2;
        Group().passedOver = groups_.size() > kDocument;
    }

    void ReadHexByte() {
        constexpr int kHex = 16;
        const std::string_view digits = text_.substr(at_, 2);
        unsigned byte = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), byte, kHex);
        if (error != std::errc() || digits.size() < 2 || end != digits.data() + 2) {
            return;
        }
        at_ += 2;
        if (standInsLeft_ > 0) {
            TakeStandIn();
        } else if (!Group().passedOver && byte != 0) {
            AddByte(static_cast<char>(byte));
        }
    }

    void AddByte(char byte) {
        constexpr unsigned char kFirstLead = 0x81;
        if (bytes_.empty()) {
            bytesBegin_ = begin_;
        }
        bytes_ += byte;
        bytesEnd_ = at_;
        const bool waits =
            IsDoubleByte(CodePage()) && bytes_.size() == 1 && static_cast<unsigned char>(byte) >= kFirstLead;
        if (!waits) {
            FlushBytes();
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
        if (word.name != "u") {
            Settle();
        }
        if (word.name == "bin") {
            at_ += std::min(static_cast<std::size_t>(std::max(number, 0L)), text_.size() - at_);
        } else if (kPassedOver.contains(word.name)) {
            PassOver();
            Group().fontTable = word.name == "fonttbl";
        } else if (word.name == "u") {
            ReadUnicode(number);
        } else if (word.name == "uc") {
            Group().standIns = static_cast<int>(std::clamp(number, 0L, 99L));
        } else if (const auto text = kWordTexts.find(word.name); text != kWordTexts.end()) {
            Show(text->second);
        } else if (!RunMarkWord(word.name, !word.number || number != 0)) {
            RunCodePageWord(word.name, static_cast<int>(std::clamp(number, -1L, 99999L)));
        }
    }

    bool RunMarkWord(std::string_view name, bool on) {
        Marks& marks = Group().marks;
        if (name == "b") {
            marks.bold = on;
        } else if (name == "i") {
            marks.italic = on;
        } else if (name == "ul") {
            marks.underline = on;
        } else if (name == "ulnone") {
            marks.underline = false;
        } else if (name == "protect") {
            marks.isProtected = on;
        } else {
            return false;
        }
        return true;
    }

    void RunCodePageWord(std::string_view name, int number) {
        constexpr int kDosAmerican = 437;
        constexpr int kDosWestern = 850;
        if (name == "ansicpg") {
            codePage_ = number > 0 ? number : kWestern;
        } else if (name == "mac") {
            codePage_ = kMacintosh;
        } else if (name == "pc") {
            codePage_ = kDosAmerican;
        } else if (name == "pca") {
            codePage_ = kDosWestern;
        } else if (name == "deff") {
            defaultFont_ = number;
        } else if (name == "plain") {
            Group().font = defaultFont_;
            Group().marks = {};
            Group().looks = {};
        } else if (name == "f") {
            Group().font = number;
            Group().looks.font = number;
        } else if (name == "fs") {
            Group().looks.size = number;
        } else if (name == "cf") {
            Group().looks.colour = number;
        } else if (name == "highlight") {
            Group().looks.highlight = number;
        } else if (name == "fcharset" && Group().fontTable) {
            if (const int page = CodePageOfCharset(number); page != 0) {
                fontCodePages_[Group().font] = page;
            }
        }
    }

    int CodePage() {
        const auto page = fontCodePages_.find(Group().font);
        return page == fontCodePages_.end() ? codePage_ : page->second;
    }

    void ReadUnicode(long number) {
        standInsLeft_ = Group().standIns;
        FlushBytes();
        const long code = number < 0 ? number + 0x10000 : number;  // written as a signed 16-bit number
        if (Group().passedOver || code <= 0 || code > 0x10FFFF) {
            return;
        }
        if (U16_IS_LEAD(code)) {
            FlushLead();
            lead_ = code;
            leadBegin_ = begin_;
            leadEnd_ = at_;
        } else if (U16_IS_TRAIL(code)) {
            const long lead = std::exchange(lead_, 0);
            const std::size_t begin = lead == 0 ? begin_ : leadBegin_;
            Show(std::u32string(
                     1, lead == 0 ? kReplacement : static_cast<char32_t>(U16_GET_SUPPLEMENTARY(lead, code))),
                 begin, at_);
        } else {
            FlushLead();
            Show(static_cast<char32_t>(code));
        }
    }

    /// Half characters that nothing follows any more.
    void Settle() {
        FlushBytes();
        FlushLead();
    }
    void FlushBytes() {
        if (!bytes_.empty()) {
            FlushLead();
            const std::string bytes = std::exchange(bytes_, {});
            Show(CodesOf(Decode(bytes, CodePage())), bytesBegin_, bytesEnd_);
        }
    }
    void FlushLead() {
        if (std::exchange(lead_, 0) != 0) {
            Show(std::u32string(1, kReplacement), leadBegin_, leadEnd_);
        }
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::size_t begin_ = 0;  ///< of what is read now
    std::size_t kept_ = 0;   ///< the source before it stands in pieces
    bool ended_ = false;
    Pieces pieces_;
    std::vector<GroupState> groups_{GroupState{}};
    GroupState last_;
    std::string bytes_;  ///< the first of two bytes that make a character
    std::size_t bytesBegin_ = 0;
    std::size_t bytesEnd_ = 0;
    long lead_ = 0;  ///< the first of two escapes that make a character
    std::size_t leadBegin_ = 0;
    std::size_t leadEnd_ = 0;
    int standInsLeft_ = 0;
    int codePage_ = kWestern;
    int defaultFont_ = -1;
    std::map<int, int> fontCodePages_;
};

/// Where the character that begins there ends; a byte that is no UTF-8 is one of its own, whatever stands
/// behind it.
std::size_t EndOfCharacter(std::string_view text, std::size_t begin) {
    auto at = static_cast<int32_t>(begin);
    UChar32 code = 0;
    U8_NEXT(text.data(), at, static_cast<int32_t>(text.size()), code);
    return code < 0 ? begin + 1 : static_cast<std::size_t>(at);
}

}  // namespace

Pieces ReadRichText(std::string_view source) {
    return Reader(source).Read();
}

Pieces ReadPlainText(std::string_view source) {
    Pieces pieces;
    for (std::size_t at = 0; at < source.size();) {
        const std::size_t begin = at;
        at = EndOfCharacter(source, begin);
        if (source[begin] == '\r' && at < source.size() && source[at] == '\n') {
            ++at;
        }
        Piece piece;
        piece.source = std::string(source.substr(begin, at - begin));
        const std::u32string codes = CodesOf(piece.source);
        piece.code = piece.source[0] == '\r' ? U'\n' : codes.front();
        piece.code = piece.code == 0 ? kReplacement : piece.code;
        pieces.all.push_back(std::move(piece));
    }
    return pieces;
}

std::string Utf8Of(char32_t code) {
    std::array<char, U8_MAX_LENGTH> buffer{};
    int32_t length = 0;
    U8_APPEND_UNSAFE(buffer.data(), length, static_cast<UChar32>(code));
    return {buffer.data(), static_cast<std::size_t>(length)};
}

std::u32string CodesOf(std::string_view text) {
    const std::string valid = ToUtf8(text);
    std::u32string codes;
    for (int32_t at = 0; at < static_cast<int32_t>(valid.size());) {
        UChar32 code = 0;
        U8_NEXT_OR_FFFD(valid.data(), at, static_cast<int32_t>(valid.size()), code);
        codes += static_cast<char32_t>(code);
    }
    return codes;
}

}  // namespace kv::rtf
