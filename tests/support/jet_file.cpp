#include "support/jet_file.h"

#include <array>
#include <numeric>
#include <utility>

#include "base/platform.h"

namespace kv::test {
namespace {

using namespace jet_type;

constexpr std::size_t kListPage = 2;
/// The row of another page in which a table's map of pages stands.
constexpr std::size_t kMapBytes = 64;

int FixedSize(int type) {
    switch (type) {
        case kBoolean:
            return 0;
        case kByte:
            return 1;
        case kShort:
            return 2;
        case kLong:
        case kSingle:
            return 4;
        case kMoney:
        case kDouble:
        case kMoment:
            return 8;
        case kGuid:
            return 16;
        case kDecimal:
            return 17;
        default:
            return -1;
    }
}

bool IsFixed(const JetColumn& column) {
    return FixedSize(column.type) >= 0;
}

/// RC4, which enciphers and deciphers alike.
std::string InCipher(std::uint32_t key, std::string bytes) {
    const std::string keyBytes = JetNumber(key, 4);
    std::array<unsigned char, 256> state{};
    std::iota(state.begin(), state.end(), static_cast<unsigned char>(0));
    unsigned char x = 0;
    unsigned char y = 0;
    for (std::size_t i = 0; i < state.size(); ++i) {
        y = static_cast<unsigned char>(y + state[i] + static_cast<unsigned char>(keyBytes[i % 4]));
        std::swap(state[i], state[y]);
    }
    y = 0;
    for (char& byte : bytes) {
        y = static_cast<unsigned char>(y + state[++x]);
        std::swap(state[x], state[y]);
        byte = static_cast<char>(byte ^ state[static_cast<unsigned char>(state[x] + state[y])]);
    }
    return bytes;
}

class Writer {
  public:
    explicit Writer(const JetForm& form)
        : form_(form), jet3_(form.version == JetVersion::Jet3), page_(JetPageSize(form.version)) {}

    std::string Write(const std::vector<JetTable>& tables) {
        pages_ = {Head(), std::string(page_, '\0'), std::string(page_, '\0')};
        JetTable list{"MSysObjects",
                      {{"Id", kLong}, {"Name"}, {"Type", kShort}, {"Flags", kLong}, {"LvProp", kOle}},
                      {},
                      {},
                      {},
                      1};
        const auto add = [&](const std::string& name, std::size_t page, int kind, std::uint32_t flags) {
            list.rows.push_back({JetNumber(page, 4), PlainText(name), JetNumber(kind & 0xFFFF, 2),
                                 JetNumber(flags, 4), std::nullopt});
        };
        add(list.name, kListPage, 1, 0x80000000);
        for (const JetTable& table : tables)
            add(table.name, table.kind == 1 ? AddTable(table, AddPage()) : 0, table.kind, 0);
        AddTable(list, kListPage);
        std::string file;
        for (std::size_t page = 0; page < pages_.size(); ++page)
            file += page == 0 || form_.key == 0
                        ? pages_[page]
                        : InCipher(form_.key ^ static_cast<std::uint32_t>(page), pages_[page]);
        return file;
    }

  private:
    /// A real file's, with the form's own words in it. From 0x18 on it is in a cipher of its own.
    std::string Head() const {
        constexpr std::uint32_t kHeadKey = 0x6B39DAC7;
        constexpr std::size_t kCipher = 0x18;
        std::string head = ReadFile(KV_SOURCE_DIR "/tests/exchange/data/users.mdb").value().substr(0, page_);
        if (form_.version >= JetVersion::Ace2007)
            head.replace(4, 15, "Standard ACE DB");
        head[0x14] = static_cast<char>(form_.version);
        std::string words = InCipher(kHeadKey, head.substr(kCipher, jet3_ ? 126 : 128));
        words.replace(0x3C - kCipher, 2, JetNumber(static_cast<std::uint64_t>(form_.codePage), 2));
        words.replace(0x3E - kCipher, 4, JetNumber(form_.key, 4));
        return head.replace(kCipher, words.size(), InCipher(kHeadKey, words));
    }

    /// A number in the width of counts and offsets within a row.
    std::string Small(std::size_t number) const { return JetNumber(number, jet3_ ? 1 : 2); }

    std::string PlainText(const std::string& text) const {
        if (jet3_)
            return text;
        std::string bytes;
        for (const char letter : text)
            bytes += {letter, '\0'};
        return bytes;
    }

    std::string Name(const std::string& name) const {
        const std::string text = PlainText(name);
        return Small(text.size()) + text;
    }

    std::size_t DataHead() const { return jet3_ ? 10 : 14; }

    std::size_t AddPage() {
        pages_.emplace_back(page_, '\0');
        return pages_.size() - 1;
    }

    void Put(std::size_t page, std::size_t offset, const std::string& bytes) {
        pages_[page].replace(offset, bytes.size(), bytes);
    }

    std::size_t AddTable(const JetTable& table, std::size_t page) {
        const std::vector<std::size_t> data = AddRows(table, page);
        std::string map = '\0' + JetNumber(0, 4) + std::string(kMapBytes, '\0');
        for (const std::size_t number : data)
            map.at(5 + number / 8) |= static_cast<char>(1 << number % 8);
        const std::size_t mapPage = AddDataPage(1, {map}, {});
        AddDefinition(table, page, mapPage << 8);
        return page;
    }

    /// A page of rows, stored from its end to its front.
    std::size_t AddDataPage(std::size_t owner, const std::vector<std::string>& rows,
                            const std::set<std::size_t>& deleted) {
        const std::size_t page = AddPage();
        std::string offsets;
        std::size_t end = page_;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            end -= rows[i].size();
            Put(page, end, rows[i]);
            offsets += JetNumber(end | (deleted.contains(i) ? 0xC000U : 0U), 2);
        }
        Put(page, 0,
            "\x01\x01" + JetNumber(end - DataHead() - offsets.size(), 2) + JetNumber(owner, 4) +
                JetNumber(0, DataHead() - 10) + JetNumber(rows.size(), 2) + offsets);
        return page;
    }

    std::vector<std::size_t> AddRows(const JetTable& table, std::size_t owner) {
        std::vector<std::size_t> pages;
        std::vector<std::string> rows;
        std::set<std::size_t> deleted;
        std::size_t room = page_ - DataHead();
        const auto flush = [&] {
            pages.push_back(AddDataPage(owner, rows, deleted));
            rows.clear();
            deleted.clear();
            room = page_ - DataHead();
        };
        for (std::size_t i = 0; i < table.rows.size(); ++i) {
            std::string row = RowBytes(table, table.rows[i]);
            if (row.size() + 2 > room)
                flush();
            if (table.deleted.contains(i))
                deleted.insert(rows.size());
            room -= row.size() + 2;
            rows.push_back(std::move(row));
        }
        if (!rows.empty())
            flush();
        return pages;
    }

    std::string RowBytes(const JetTable& table, const JetRow& row) {
        const std::size_t count = row.size();
        std::string bytes = Small(count);
        std::string mask((count + 7) / 8, '\0');
        std::vector<std::size_t> offsets;
        for (const bool fixed : {true, false}) {
            for (std::size_t i = 0; i < count; ++i) {
                const JetColumn& column = table.columns.at(i);
                if (row[i])
                    mask[i / 8] |= static_cast<char>(1 << i % 8);
                if (IsFixed(column) != fixed)
                    continue;
                if (fixed) {
                    std::string field = row[i].value_or("");
                    field.resize(static_cast<std::size_t>(FixedSize(column.type)));
                    bytes += field;
                    continue;
                }
                offsets.push_back(bytes.size());
                if (row[i])
                    bytes += column.type == kMemo || column.type == kOle ? LongValue(*row[i]) : *row[i];
            }
        }
        if (!offsets.empty()) {
            const std::size_t variable = offsets.size();
            offsets.push_back(bytes.size());
            for (std::size_t i = offsets.size(); i-- > 0;)
                bytes += Small(offsets[i] & (jet3_ ? 0xFFU : 0xFFFFU));
            if (jet3_)
                bytes += Jumps(offsets, bytes.size() + 1 + mask.size());
            bytes += Small(variable);
        }
        return bytes + mask;
    }

    /// Jet 3 keeps the lower byte of an offset, and for each 256 bytes of the row the first column that lies
    /// behind them; the last ones stand in front.
    static std::string Jumps(const std::vector<std::size_t>& offsets, std::size_t rowSize) {
        std::string jumps;
        for (std::size_t bound = 256; rowSize + jumps.size() > bound; bound += 256) {
            std::size_t first = 0;
            while (first < offsets.size() && offsets[first] < bound)
                ++first;
            jumps.insert(0, 1, first < offsets.size() ? static_cast<char>(first) : '\xFF');
        }
        return jumps;
    }

    /// Within the row, on a page of its own, or in a chain of pages.
    std::string LongValue(const std::string& content) {
        constexpr std::size_t kMostInRow = 64;
        const std::size_t mostOnPage = page_ - 96;
        constexpr std::size_t kOwner = 0x4C41564C;  // "LVAL"
        if (content.size() <= kMostInRow)
            return JetNumber(content.size() | 0x80000000, 4) + JetNumber(0, 8) + content;
        if (content.size() <= mostOnPage)
            return JetNumber(content.size() | 0x40000000, 4) +
                   JetNumber(AddDataPage(kOwner, {content}, {}) << 8, 4) + JetNumber(0, 4);
        std::size_t next = 0;
        for (std::size_t start = (content.size() - 1) / mostOnPage * mostOnPage;; start -= mostOnPage) {
            next = AddDataPage(kOwner, {JetNumber(next, 4) + content.substr(start, mostOnPage)}, {}) << 8;
            if (start == 0)
                break;
        }
        return JetNumber(content.size(), 4) + JetNumber(next, 4) + JetNumber(0, 4);
    }

    void AddDefinition(const JetTable& table, std::size_t page, std::size_t map) {
        std::string definition = DefinitionHead(table, map) + ColumnWords(table) + IndexWords(table);
        definition.replace(0, 4, JetNumber(definition.size() + 8, 4));
        // What a page does not hold stands on the next one, behind a head of 8 bytes.
        constexpr std::size_t kHead = 8;
        for (std::size_t at = 0; at < definition.size(); at += page_ - kHead) {
            const bool more = at + page_ - kHead < definition.size();
            const std::size_t next = more ? AddPage() : 0;
            Put(page, 0,
                "\x02\x01" + JetNumber(0, 2) + JetNumber(next, 4) + definition.substr(at, page_ - kHead));
            page = next;
        }
    }

    std::string DefinitionHead(const JetTable& table, std::size_t map) const {
        std::size_t variable = 0;
        std::size_t shown = 0;
        for (const JetColumn& column : table.columns) {
            variable += IsFixed(column) ? 0 : 1;
            shown += column.deleted ? 0 : 1;
        }
        return JetNumber(0, jet3_ ? 4 : 8) + JetNumber(table.rows.size() - table.deleted.size(), 4) +
               JetNumber(0, jet3_ ? 4 : 20) + 'N' + JetNumber(table.columns.size(), 2) +
               JetNumber(variable, 2) + JetNumber(shown, 2) + JetNumber(table.indexes.size(), 4) +
               JetNumber(table.indexes.size(), 4) + JetNumber(map, 4) + JetNumber(map, 4) +
               std::string((jet3_ ? 8 : 12) * table.indexes.size(), '\0');
    }

    std::string ColumnWords(const JetTable& table) const {
        std::string words;
        std::string names;
        std::size_t variable = 0;
        std::size_t fixed = 0;
        for (std::size_t i = 0; i < table.columns.size(); ++i) {
            const JetColumn& column = table.columns[i];
            const bool isFixed = IsFixed(column);
            const int size = isFixed ? FixedSize(column.type) : column.size;
            if (!column.deleted) {
                const std::string digits = {static_cast<char>(column.precision),
                                            static_cast<char>(column.scale)};
                words += static_cast<char>(column.type) + JetNumber(0, jet3_ ? 0 : 4) + JetNumber(i, 2) +
                         JetNumber(isFixed ? 0 : variable, 2) + JetNumber(i, 2) +
                         (jet3_ ? JetNumber(0, 2) + digits : digits) + JetNumber(0, 2) +
                         static_cast<char>((isFixed ? 1 : 0) | 2 | (column.counter ? 4 : 0)) +
                         JetNumber(column.calculated ? 0xC0 : 0, jet3_ ? 0 : 5) +
                         JetNumber(isFixed ? fixed : 0, 2) + JetNumber(static_cast<std::uint64_t>(size), 2);
                names += Name(column.name);
            }
            variable += isFixed ? 0 : 1;
            fixed += isFixed ? static_cast<std::size_t>(size) : 0;
        }
        return words + names;
    }

    std::string IndexWords(const JetTable& table) const {
        constexpr std::size_t kMostColumns = 10;
        const int unknown = jet3_ ? 0 : 4;
        std::string keys;
        std::string kinds;
        std::string names;
        for (std::size_t i = 0; i < table.indexes.size(); ++i) {
            const JetIndex& index = table.indexes[i];
            keys += JetNumber(0, unknown);
            for (std::size_t k = 0; k < kMostColumns; ++k)
                keys += k < index.columns.size()
                            ? JetNumber(static_cast<std::uint64_t>(index.columns[k]), 2) + '\1'
                            : "\xFF\xFF" + JetNumber(0, 1);
            keys += JetNumber(0, 8) + JetNumber(0, unknown) +
                    static_cast<char>(index.unique || index.primary ? 1 : 0) + JetNumber(0, jet3_ ? 0 : 5);
            kinds += JetNumber(0, unknown) + JetNumber(i, 4) + JetNumber(i, 4) + '\0' +
                     JetNumber(0xFFFFFFFF, 4) + JetNumber(0, 4) + JetNumber(0, 2) +
                     static_cast<char>(index.primary ? 1 : 0) + JetNumber(0, unknown);
            names += Name(index.name);
        }
        return keys + kinds + names + "\xFF\xFF";
    }

    JetForm form_;
    bool jet3_;
    std::size_t page_;
    std::vector<std::string> pages_;
};

}  // namespace

std::string JetNumber(std::uint64_t number, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i, number >>= 8)
        text += static_cast<char>(number & 0xFF);
    return text;
}

std::string JetText(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text)
        bytes += JetNumber(unit, 2);
    return bytes;
}

std::size_t JetPageSize(JetVersion version) {
    return version == JetVersion::Jet3 ? 2048 : 4096;
}

std::string JetFile(const std::vector<JetTable>& tables, const JetForm& form) {
    return Writer(form).Write(tables);
}

}  // namespace kv::test
