#include "support/jet_file.h"

#include <stdexcept>

#include "base/platform.h"

namespace kv::test {
namespace {

using namespace jet_type;

constexpr std::size_t kPage = 4096;
constexpr std::size_t kDataHead = 14;
constexpr std::size_t kListPage = 2;
constexpr std::size_t kFirstFree = 3;
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

std::string PlainText(const std::string& text) {
    std::string bytes;
    for (const char letter : text)
        bytes += {letter, '\0'};
    return bytes;
}

class Writer {
  public:
    std::string Write(const std::vector<JetTable>& tables) {
        // Of a real file: behind its first words the head is in cipher.
        const auto real = ReadFile(KV_SOURCE_DIR "/tests/exchange/data/users.mdb");
        pages_ = {real.value().substr(0, kPage), std::string(kPage, '\0'), std::string(kPage, '\0')};
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
        for (const std::string& page : pages_)
            file += page;
        return file;
    }

  private:
    std::size_t AddPage() {
        pages_.emplace_back(kPage, '\0');
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
        std::size_t end = kPage;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            end -= rows[i].size();
            Put(page, end, rows[i]);
            offsets += JetNumber(end | (deleted.contains(i) ? 0xC000U : 0U), 2);
        }
        Put(page, 0,
            "\x01\x01" + JetNumber(end - kDataHead - offsets.size(), 2) + JetNumber(owner, 4) +
                JetNumber(0, 4) + JetNumber(rows.size(), 2) + offsets);
        return page;
    }

    std::vector<std::size_t> AddRows(const JetTable& table, std::size_t owner) {
        std::vector<std::size_t> pages;
        std::vector<std::string> rows;
        std::set<std::size_t> deleted;
        std::size_t room = kPage - kDataHead;
        const auto flush = [&] {
            pages.push_back(AddDataPage(owner, rows, deleted));
            rows.clear();
            deleted.clear();
            room = kPage - kDataHead;
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
        const std::size_t count = table.columns.size();
        std::string bytes = JetNumber(count, 2);
        std::string mask((count + 7) / 8, '\0');
        std::vector<std::size_t> offsets;
        for (const bool fixed : {true, false}) {
            for (std::size_t i = 0; i < count; ++i) {
                const JetColumn& column = table.columns[i];
                if (row.at(i))
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
            bytes += JetNumber(bytes.size(), 2);
            for (std::size_t i = offsets.size(); i-- > 0;)
                bytes += JetNumber(offsets[i], 2);
            bytes += JetNumber(offsets.size(), 2);
        }
        return bytes + mask;
    }

    /// Within the row, on a page of its own, or in a chain of pages.
    std::string LongValue(const std::string& content) {
        constexpr std::size_t kMostInRow = 64;
        constexpr std::size_t kMostOnPage = 4000;
        constexpr std::size_t kOwner = 0x4C41564C;  // "LVAL"
        if (content.size() <= kMostInRow)
            return JetNumber(content.size() | 0x80000000, 4) + JetNumber(0, 8) + content;
        if (content.size() <= kMostOnPage)
            return JetNumber(content.size() | 0x40000000, 4) +
                   JetNumber(AddDataPage(kOwner, {content}, {}) << 8, 4) + JetNumber(0, 4);
        std::size_t next = 0;
        for (std::size_t start = (content.size() - 1) / kMostOnPage * kMostOnPage;; start -= kMostOnPage) {
            next = AddDataPage(kOwner, {JetNumber(next, 4) + content.substr(start, kMostOnPage)}, {}) << 8;
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
        for (std::size_t at = 0; at < definition.size(); at += kPage - kHead) {
            const bool more = at + kPage - kHead < definition.size();
            const std::size_t next = more ? AddPage() : 0;
            Put(page, 0,
                "\x02\x01" + JetNumber(0, 2) + JetNumber(next, 4) + definition.substr(at, kPage - kHead));
            page = next;
        }
    }

    static std::string DefinitionHead(const JetTable& table, std::size_t map) {
        std::size_t variable = 0;
        for (const JetColumn& column : table.columns)
            variable += IsFixed(column) ? 0 : 1;
        const std::size_t count = table.columns.size();
        return JetNumber(0, 8) + JetNumber(table.rows.size() - table.deleted.size(), 4) + JetNumber(0, 8) +
               JetNumber(0, 4) + JetNumber(0, 8) + 'N' + JetNumber(count, 2) + JetNumber(variable, 2) +
               JetNumber(count, 2) + JetNumber(table.indexes.size(), 4) + JetNumber(table.indexes.size(), 4) +
               JetNumber(map, 4) + JetNumber(map, 4) + std::string(12 * table.indexes.size(), '\0');
    }

    static std::string ColumnWords(const JetTable& table) {
        std::string words;
        std::string names;
        std::size_t variable = 0;
        std::size_t fixed = 0;
        for (std::size_t i = 0; i < table.columns.size(); ++i) {
            const JetColumn& column = table.columns[i];
            const bool isFixed = IsFixed(column);
            const int size = isFixed ? FixedSize(column.type) : column.size;
            words += static_cast<char>(column.type) + JetNumber(0, 4) + JetNumber(i, 2) +
                     JetNumber(isFixed ? 0 : variable++, 2) + JetNumber(i, 2) +
                     static_cast<char>(column.precision) + static_cast<char>(column.scale) + JetNumber(0, 2) +
                     static_cast<char>((isFixed ? 1 : 0) | 2 | (column.counter ? 4 : 0)) + JetNumber(0, 5) +
                     JetNumber(isFixed ? fixed : 0, 2) + JetNumber(static_cast<std::uint64_t>(size), 2);
            fixed += isFixed ? static_cast<std::size_t>(size) : 0;
            names += JetNumber(2 * column.name.size(), 2) + PlainText(column.name);
        }
        return words + names;
    }

    static std::string IndexWords(const JetTable& table) {
        constexpr std::size_t kMostColumns = 10;
        std::string keys;
        std::string kinds;
        std::string names;
        for (std::size_t i = 0; i < table.indexes.size(); ++i) {
            const JetIndex& index = table.indexes[i];
            keys += JetNumber(0, 4);
            for (std::size_t k = 0; k < kMostColumns; ++k)
                keys += k < index.columns.size()
                            ? JetNumber(static_cast<std::uint64_t>(index.columns[k]), 2) + '\1'
                            : "\xFF\xFF" + JetNumber(0, 1);
            keys +=
                JetNumber(0, 12) + static_cast<char>(index.unique || index.primary ? 1 : 0) + JetNumber(0, 5);
            kinds += JetNumber(0, 4) + JetNumber(i, 4) + JetNumber(i, 4) + '\0' + JetNumber(0xFFFFFFFF, 4) +
                     JetNumber(0, 4) + JetNumber(0, 2) + static_cast<char>(index.primary ? 1 : 0) +
                     JetNumber(0, 4);
            names += JetNumber(2 * index.name.size(), 2) + PlainText(index.name);
        }
        return keys + kinds + names + "\xFF\xFF";
    }

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

std::string JetFile(const std::vector<JetTable>& tables) {
    return Writer().Write(tables);
}

}  // namespace kv::test
