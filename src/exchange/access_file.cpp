#include "exchange/access_file.h"

// libmdb's header wants this one before it.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <fstream>
#include <optional>
#include <string_view>

#include <fmt/format.h>
#include <glib.h>
#include <mdbtools.h>

#include "base/platform.h"
#include "base/text.h"
#include "exchange/jet_row.h"
#include "exchange/jet_values.h"

// libmdb finds tables, pages and rows. A row's fields are found here: where a column was deleted and another
// added, the library looks for that one's field in the rows before too. So is what a field's bytes mean: as
// text, the form that the library offers, money would pass through its formats, Null would look like empty
// text and a memo would end at a size fixed beforehand.

namespace kv {
namespace {

struct CloseFile {
    void operator()(MdbHandle* file) const { mdb_close(file); }
};
struct FreeTable {
    void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
};
using FileHandle = std::unique_ptr<MdbHandle, CloseFile>;
using TableHandle = std::unique_ptr<MdbTableDef, FreeTable>;

// The flags in a row's offset: it lies elsewhere or is deleted; and the offset itself.
constexpr int kNoRow = 0x4000;
constexpr int kRowOffset = 0x1FFF;

constexpr int kMostTextSize = 255;

/// How a column's values are kept in the file.
struct Kept {
    int number = 0;  // among the columns that the library has
    jet::FieldPlace place;
    int type = 0;
    int scale = 0;
    ColumnType as = ColumnType::Text;
};

// A number with decimals becomes money where money has as many, else a text where a double would not hold its
// digits.
constexpr int kMoneyScale = 4;
constexpr int kDoubleDigits = 15;

// The library has the names of the two the wrong way round, at least in this version; a number has at least
// as many digits as decimals.
int Decimals(const MdbColumn& column) {
    return std::min(column.col_prec, column.col_scale);
}

ColumnType DecimalType(const MdbColumn& column) {
    if (Decimals(column) <= kMoneyScale)
        return ColumnType::Currency;
    return std::max(column.col_prec, column.col_scale) <= kDoubleDigits ? ColumnType::Double
                                                                        : ColumnType::Text;
}

jet::FieldPlace PlaceOf(const MdbColumn& column) {
    return {.number = static_cast<std::size_t>(column.col_num),
            .fixed = column.is_fixed != 0,
            .offset = static_cast<std::size_t>(column.fixed_offset),
            .size = static_cast<std::size_t>(column.col_size),
            .variable = column.var_col_num};
}

/// The column's type here; nothing for one that is not taken.
std::optional<ColumnType> TypeOf(const MdbColumn& column) {
    switch (column.col_type) {
        case MDB_BOOL:
            return ColumnType::Boolean;
        case MDB_BYTE:
        case MDB_INT:
            return ColumnType::Short;
        case MDB_LONGINT:
            return ColumnType::Long;
        case MDB_MONEY:
            return ColumnType::Currency;
        case MDB_FLOAT:
        case MDB_DOUBLE:
            return ColumnType::Double;
        case MDB_DATETIME:
            return ColumnType::DateTime;
        case MDB_TEXT:
        case MDB_REPID:
            return ColumnType::Text;
        case MDB_MEMO:
            return ColumnType::Memo;
        case MDB_NUMERIC:
            return DecimalType(column);
        default:
            return std::nullopt;
    }
}

std::string WhyUntaken(const MdbColumn& column) {
    switch (column.col_type) {
        case MDB_BINARY:
        case MDB_OLE:
            return "binary content is not kept";
        case MDB_COMPLEX:
            return "several values in one field are not kept";
        default:
            return fmt::format("type {} is not known", column.col_type);
    }
}

int TextSize(const MdbColumn& column, bool jet3) {
    constexpr int kGuidSize = 38;
    if (column.col_type == MDB_REPID)
        return kGuidSize;
    const int size = jet3 ? column.col_size : column.col_size / 2;
    return column.col_type != MDB_TEXT || size < 1 ? kMostTextSize : std::min(size, kMostTextSize);
}

}  // namespace

// -------------------------------------------------------------------------------------------------- table

/// Walks the table's pages and rows. The file has one page in memory, so one table is read at a time.
struct AccessTable::Reader {
    MdbHandle* file;
    std::uintmax_t fileSize;
    // Stands in for the entry of the library's own list of tables, and must outlive the definition.
    std::unique_ptr<MdbCatalogEntry> entry;
    TableHandle definition;
    TableInfo info;
    std::vector<Kept> kept;  // for each column of `info`
    std::vector<std::string> untaken;
    std::optional<jet::Row> fields;
    std::uint32_t page = 0;
    int row = 0;
    int rowsOnPage = 0;

    Reader(MdbHandle* opened, std::uintmax_t size, const std::string& name, unsigned long at);
    std::string DefinitionWords() const;
    std::vector<int> CalculatedColumns(std::string_view words) const;
    void ReadColumns();
    void TakeColumns(const std::vector<int>& calculated);
    void ReadIndexes();
    bool FindRow();
    bool SplitRow();
    std::string Text(std::string_view bytes) const;
    std::string_view RowElsewhere(std::uint32_t place) const;
    std::string LongText(std::string_view bytes) const;
    std::optional<Value> Read(const Kept& column, std::string_view bytes) const;
    Value Field(const Kept& column) const;
};

AccessTable::Reader::Reader(MdbHandle* opened, std::uintmax_t size, const std::string& name, unsigned long at)
    : file(opened), fileSize(size), entry(std::make_unique<MdbCatalogEntry>()) {
    info.name = name;
    *entry = {};
    entry->mdb = file;
    entry->object_type = MDB_TABLE;
    entry->table_pg = at;
    name.copy(entry->object_name, MDB_MAX_OBJ_NAME);
    definition.reset(mdb_read_table(entry.get()));
    if (!definition)
        throw AccessError("its definition is damaged");
    ReadColumns();
    ReadIndexes();
    mdb_rewind_table(definition.get());
}

/// The bytes of its first page and of those on which it goes on, these without their heads. Throws
/// AccessError where one is missing: the library would take what it has in memory for it.
std::string AccessTable::Reader::DefinitionWords() const {
    constexpr std::size_t kHead = 8;
    const auto size = static_cast<std::size_t>(file->fmt->pg_size);
    const std::string_view bytes(reinterpret_cast<const char*>(file->alt_pg_buf), size);
    std::string words;
    for (auto at = static_cast<std::uint32_t>(entry->table_pg); at != 0;
         at = static_cast<std::uint32_t>(mdb_get_int32(file->alt_pg_buf, 4))) {
        const bool there = at < fileSize / size && words.size() < fileSize &&
                           mdb_read_alt_pg(file, at) == file->fmt->pg_size;
        if (!there || file->alt_pg_buf[0] != MDB_PAGE_TABLE)
            throw AccessError("its definition is damaged");
        words += bytes.substr(words.empty() ? 0 : kHead);
    }
    return words;
}

/// The numbers of the columns that Access works out from others. They have a flag that the library doesn't
/// look at.
std::vector<int> AccessTable::Reader::CalculatedColumns(std::string_view words) const {
    constexpr std::size_t kFlags = 16;
    constexpr unsigned char kCalculated = 0xC0;
    std::vector<int> numbers;
    if (file->f->jet_version < MDB_VER_ACCDB_2010)
        return numbers;
    const std::size_t size = file->fmt->tab_col_entry_size;
    std::size_t at = file->fmt->tab_cols_start_offset +
                     std::size_t{definition->num_real_idxs} * file->fmt->tab_ridx_entry_size;
    for (unsigned i = 0; i < definition->num_cols && at + size <= words.size(); ++i, at += size)
        if ((static_cast<unsigned char>(words[at + kFlags]) & kCalculated) != 0)
            numbers.push_back(static_cast<unsigned char>(words[at + file->fmt->col_num_offset]));
    return numbers;
}

void AccessTable::Reader::ReadColumns() {
    const std::string words = DefinitionWords();
    // The library reads on from the page that it has.
    if (mdb_read_pg(file, entry->table_pg) != file->fmt->pg_size || !mdb_read_columns(definition.get()) ||
        definition->num_cols == 0 || definition->columns->len != definition->num_cols)
        throw AccessError("its definition is damaged");
    TakeColumns(CalculatedColumns(words));
}

void AccessTable::Reader::TakeColumns(const std::vector<int>& calculated) {
    const bool jet3 = IS_JET3(file);
    for (unsigned i = 0; i < definition->num_cols; ++i) {
        const auto& from = *static_cast<const MdbColumn*>(g_ptr_array_index(definition->columns, i));
        if (std::find(calculated.begin(), calculated.end(), from.col_num) != calculated.end()) {
            untaken.push_back(fmt::format("column {}: calculated values are not kept", from.name));
            continue;
        }
        const auto type = TypeOf(from);
        if (!type) {
            untaken.push_back(fmt::format("column {}: {}", from.name, WhyUntaken(from)));
            continue;
        }
        ColumnInfo column;
        column.name = from.name;
        if (column.name.empty() || info.Find(column.name))
            throw AccessError("its definition is damaged");
        column.type = *type;
        column.size = *type == ColumnType::Text ? TextSize(from, jet3) : 0;
        column.counter = *type == ColumnType::Long && from.is_long_auto != 0 && !info.Counter();
        if (*type == ColumnType::Boolean)
            column.defaultValue = false;
        info.columns.push_back(std::move(column));
        kept.push_back({static_cast<int>(i), PlaceOf(from), from.col_type, Decimals(from), *type});
    }
}

void AccessTable::Reader::ReadIndexes() {
    // The library's number of the kind that a relationship makes; it stands beside a real index of its own.
    constexpr int kPrimary = 1;
    constexpr int kReference = 2;
    mdb_read_indices(definition.get());  // answers nothing, but hangs them on the definition
    if (!definition->indices)
        return;
    for (unsigned i = 0; i < definition->indices->len; ++i) {
        const auto& from = *static_cast<const MdbIndex*>(g_ptr_array_index(definition->indices, i));
        if (from.index_type == kReference || from.num_keys > MDB_MAX_IDX_COLS)
            continue;
        IndexInfo index;
        index.name = from.name;
        index.primary = from.index_type == kPrimary;
        index.unique = index.primary || (from.flags & MDB_IDX_UNIQUE) != 0;
        for (unsigned key = 0; key < from.num_keys; ++key)
            for (std::size_t column = 0; column < kept.size(); ++column)
                if (kept[column].number == from.key_col_num[key] - 1)
                    index.columns.push_back(info.columns[column].name);
        if (!index.name.empty() && !index.columns.empty() && index.columns.size() == from.num_keys)
            info.indexes.push_back(std::move(index));
    }
}

/// The next row that is there, its fields split; false behind the last.
bool AccessTable::Reader::FindRow() {
    constexpr int kBytesARow = 4;  // its offset and the least that a row needs
    for (;;) {
        while (row >= rowsOnPage) {
            if (mdb_read_next_dpg(definition.get()) == 0)
                return false;
            // Where a map of pages is damaged the library goes through all of them, the last one anew.
            if (file->cur_pg <= page)
                continue;
            page = file->cur_pg;
            row = 0;
            rowsOnPage = mdb_get_int16(file->pg_buf, file->fmt->row_count_offset);
            if (rowsOnPage > file->fmt->pg_size / kBytesARow) {
                rowsOnPage = 0;
                throw AccessError(fmt::format("page {} is damaged", definition->cur_phys_pg));
            }
        }
        if (SplitRow())
            return true;
    }
}

bool AccessTable::Reader::SplitRow() {
    int start = 0;
    std::size_t size = 0;
    const int current = row++;
    const bool found = mdb_find_row(file, current, &start, &size) == 0;
    if (found && (start & kNoRow) != 0)
        return false;
    const auto* bytes = reinterpret_cast<const char*>(file->pg_buf) + (start & kRowOffset);
    if (found)
        fields = jet::Row::Of({bytes, size}, IS_JET3(file));
    if (!found || !fields)
        throw AccessError(fmt::format("row {} of page {} is damaged", current + 1, definition->cur_phys_pg));
    return true;
}

std::string AccessTable::Reader::Text(std::string_view bytes) const {
    // Jet 3 has one byte a character, or two, of the file's code page, which the library knows.
    auto text = IS_JET3(file) ? jet::CodedText(bytes, file->iconv_in) : jet::Text(bytes);
    if (!text)
        throw AccessError("the text is damaged");
    return std::move(*text);
}

/// A row of another page, for a memo; it lasts until the next one is read.
std::string_view AccessTable::Reader::RowElsewhere(std::uint32_t place) const {
    constexpr std::uint32_t kRow = 0xFF;
    constexpr int kOwner = 4;
    constexpr long kMemos = 0x4C41564C;  // "LVAL"
    void* found = nullptr;
    int start = 0;
    std::size_t length = 0;
    // The library doesn't look whether the page is one with memos and has that many.
    if (mdb_find_pg_row(file, static_cast<int>(place), &found, &start, &length) != 0 ||
        (start & kNoRow) != 0 || mdb_get_byte(found, 0) != MDB_PAGE_DATA ||
        mdb_get_int32(found, kOwner) != kMemos ||
        static_cast<int>(place & kRow) >= mdb_get_int16(found, file->fmt->row_count_offset))
        throw AccessError("the memo is damaged");
    return {static_cast<const char*>(found) + (start & kRowOffset), length};
}

/// A memo: within the row, in one row of another page, or in a chain of such.
std::string AccessTable::Reader::LongText(std::string_view bytes) const {
    constexpr std::uint32_t kInRow = 0x80000000;
    constexpr std::uint32_t kInOnePage = 0x40000000;
    constexpr std::uint32_t kSize = 0x3FFFFFFF;
    constexpr std::size_t kNext = 4;  // in a chain the next one's place stands in front
    const auto number = [](const void* at, int offset) {
        return static_cast<std::uint32_t>(mdb_get_int32(const_cast<void*>(at), offset));
    };
    if (bytes.empty())
        return {};
    if (bytes.size() < MDB_MEMO_OVERHEAD)
        throw AccessError("the memo is damaged");
    const std::uint32_t head = number(bytes.data(), 0);
    const std::size_t size = head & kSize;
    if ((head & kInRow) != 0)
        return Text(bytes.substr(MDB_MEMO_OVERHEAD));
    if (size > fileSize)
        throw AccessError("the memo is damaged");
    const bool chained = (head & kInOnePage) == 0;
    std::string content;
    for (std::uint32_t place = number(bytes.data(), 4); place != 0 && content.size() < size;) {
        const std::string_view piece = RowElsewhere(place);
        if (chained && piece.size() <= kNext)
            throw AccessError("the memo is damaged");
        content += chained ? piece.substr(kNext) : piece;
        place = chained ? number(piece.data(), 0) : 0;
    }
    if (content.size() < size)
        throw AccessError("the memo is damaged");
    return Text(std::string_view(content).substr(0, size));
}

/// A value that is there; nothing where the bytes are none of the column's type.
std::optional<Value> AccessTable::Reader::Read(const Kept& column, std::string_view bytes) const {
    switch (column.type) {
        case MDB_BYTE:
        case MDB_INT:
        case MDB_LONGINT:
            return jet::Whole(bytes);
        case MDB_MONEY:
            return jet::Money(bytes);
        case MDB_FLOAT:
        case MDB_DOUBLE:
            return jet::Floating(bytes);
        case MDB_DATETIME:
            return jet::Moment(bytes);
        case MDB_TEXT:
            return Value(Text(bytes));
        case MDB_MEMO:
            return Value(LongText(bytes));
        case MDB_REPID:
            return jet::Guid(bytes);
        case MDB_NUMERIC:
            return jet::Decimal(bytes, column.scale, FieldType(column.as));
        default:
            return std::nullopt;
    }
}

Value AccessTable::Reader::Field(const Kept& column) const {
    const bool has = fields->Has(column.place);
    if (column.as == ColumnType::Boolean)
        return has;
    if (!has)
        return {};
    const auto bytes = fields->Field(column.place);
    if (!bytes)
        throw AccessError("it lies outside its row");
    auto value = Read(column, *bytes);
    if (!value)
        throw AccessError("the value is damaged");
    return std::move(*value);
}

AccessTable::AccessTable(std::unique_ptr<Reader> reader) : reader_(std::move(reader)) {}
AccessTable::~AccessTable() = default;
AccessTable::AccessTable(AccessTable&&) noexcept = default;

const TableInfo& AccessTable::Info() const {
    return reader_->info;
}

const std::vector<std::string>& AccessTable::Untaken() const {
    return reader_->untaken;
}

long AccessTable::StatedRows() const {
    return static_cast<long>(reader_->definition->num_rows);
}

bool AccessTable::Next(std::vector<Value>& values) {
    Reader& reader = *reader_;
    if (!reader.FindRow())
        return false;
    values.resize(reader.kept.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        try {
            values[i] = reader.Field(reader.kept[i]);
        } catch (const AccessError& error) {
            throw AccessError(fmt::format("column {}: {}", reader.info.columns[i].name, error.what()));
        }
    }
    return true;
}

// ------------------------------------------------------------------------------------------------------ file

struct AccessFile::Opened {
    struct Table {
        std::string name;
        unsigned long page = 0;
    };

    std::filesystem::path path;
    std::uintmax_t size = 0;
    FileHandle handle;
    std::vector<Table> tables;
    std::vector<std::string> names;
    std::vector<std::string> untaken;

    explicit Opened(const std::filesystem::path& file);
    void ReadList();
    AccessTable Open(const std::string& name) const;
    AccessTable OpenAt(const std::string& name, unsigned long page) const;
    void ReadThrough(const std::string& name) const;
    void AddEntry(std::int64_t id, const std::string& name, std::int64_t type, std::int64_t flags);
};

void AccessFile::Opened::ReadList() {
    constexpr unsigned long kListPage = 2;
    AccessTable list = OpenAt("MSysObjects", kListPage);
    std::vector<std::size_t> places;
    for (const char* column : {"Id", "Name", "Type", "Flags"}) {
        const auto place = list.Info().Find(column);
        if (!place)
            throw AccessError("its definition is damaged");
        places.push_back(*place);
    }
    std::vector<Value> row;
    long read = 0;
    for (bool more = true; more; ++read) {
        try {
            more = list.Next(row);
            if (!more)
                break;
            AddEntry(row[places[0]].ToInteger(), row[places[1]].ToText(), row[places[2]].ToInteger(),
                     row[places[3]].IsNull() ? 0 : row[places[3]].ToInteger());
        } catch (const std::runtime_error& error) {
            // Also a field that is Null or of another type.
            untaken.push_back(fmt::format("the list of tables: {}", error.what()));
        }
    }
    if (const long lost = list.StatedRows() - read; lost > 0)
        untaken.push_back(
            fmt::format("the list of tables: {} of its {} entries can't be found", lost, list.StatedRows()));
    // The list has an entry of its own, so that none is damage too.
    if (read == 0)
        throw AccessError("it has no entries");
}

void AccessFile::Opened::AddEntry(std::int64_t id, const std::string& name, std::int64_t type,
                                  std::int64_t flags) {
    constexpr std::int64_t kTable = 1;
    constexpr std::int64_t kLinkedByOdbc = 4;
    constexpr std::int64_t kLinked = 6;
    constexpr std::int64_t kSystem = 0x80000002;
    constexpr std::int64_t kPageMask = 0xFFFFFF;
    if (type == kLinked || type == kLinkedByOdbc)
        untaken.push_back(fmt::format("table {}: it is linked, its rows lie in another file", name));
    // A table that was deleted keeps a name with ~ until the file is compacted.
    if (type != kTable || (flags & kSystem) != 0 || StartsWithNoCase(name, "MSys") ||
        name.substr(0, 1) == "~")
        return;
    tables.push_back({name, static_cast<unsigned long>(id & kPageMask)});
    names.push_back(name);
}

namespace {

/// True when the file begins as an Access file does.
bool LooksLikeAccess(const std::filesystem::path& path) {
    std::array<char, 19> head{};
    std::ifstream file(path, std::ios::binary);
    if (!file.read(head.data(), head.size()))
        return false;
    const std::string_view mark = std::string_view(head.data(), head.size()).substr(4);
    return mark == "Standard Jet DB" || mark == "Standard ACE DB";
}

/// What the library never needs for a sound file of the size.
ApartLimits TrialLimits(std::uintmax_t fileSize) {
    constexpr std::uintmax_t kMegabyte = 1 << 20;
    // The longest of memos is held a few times, as pieces, characters and text.
    constexpr std::uintmax_t kCopies = 8;
    constexpr std::chrono::seconds kLeast(10);
    return {kLeast + std::chrono::seconds(fileSize / kMegabyte), 256 * kMegabyte + kCopies * fileSize};
}

}  // namespace

AccessFile::Opened::Opened(const std::filesystem::path& file)
    : path(file),
      size(std::filesystem::file_size(file)),
      handle(mdb_open(file.string().c_str(), MDB_NOFLAGS)) {
    if (!handle)
        throw AccessError("it is of a form of Access that is not known");
    // The library deciphers what Jet wrote. From Access 2007 on the key is one of the password's.
    if (handle->f->jet_version > MDB_VER_JET4 && handle->f->db_key != 0)
        throw AccessError("it is encrypted with a password; take the password off in Access first");
    try {
        ReadList();
    } catch (const AccessError&) {
        throw AccessError("its list of tables is damaged");
    }
}

AccessTable AccessFile::Opened::Open(const std::string& name) const {
    for (const Table& table : tables)
        if (table.name == name)
            return OpenAt(name, table.page);
    throw AccessError("it is not in the file");
}

AccessTable AccessFile::Opened::OpenAt(const std::string& name, unsigned long page) const {
    return AccessTable(std::make_unique<AccessTable::Reader>(handle.get(), size, name, page));
}

/// Reads what can be read of a table.
void AccessFile::Opened::ReadThrough(const std::string& name) const {
    try {
        AccessTable table = Open(name);
        std::vector<Value> row;
        for (bool more = true; more;) {
            try {
                more = table.Next(row);
            } catch (const AccessError&) {
                // Told to who reads the table in earnest.
            }
        }
    } catch (const AccessError&) {
        // Likewise.
    }
}

AccessFile::AccessFile(const std::filesystem::path& path) {
    const std::string name = path.string();
    if (!std::filesystem::is_regular_file(path))
        throw AccessError(fmt::format("The file '{}' can't be found", name));
    if (!LooksLikeAccess(path))
        throw AccessError(fmt::format("'{}' is no Access file", name));
    std::string fault = "its list of tables is damaged";
    try {
        const auto trial = [&] {
            try {
                const Opened opened(path);
            } catch (const std::runtime_error&) {
                // Told below.
            }
        };
        const bool survived = SurvivesApart(trial, TrialLimits(std::filesystem::file_size(path)));
        if (survived) {
            opened_ = std::make_unique<Opened>(path);
            return;
        }
    } catch (const AccessError& error) {
        fault = error.what();
    }
    throw AccessError(fmt::format("'{}' can't be read: {}", name, fault));
}

AccessFile::~AccessFile() = default;
AccessFile::AccessFile(AccessFile&&) noexcept = default;

const std::filesystem::path& AccessFile::Path() const {
    return opened_->path;
}

const std::vector<std::string>& AccessFile::TableNames() const {
    return opened_->names;
}

const std::vector<std::string>& AccessFile::Untaken() const {
    return opened_->untaken;
}

AccessTable AccessFile::OpenTable(const std::string& name) const {
    // The trial opens the file anew: two processes on one handle would move each other's place in it.
    const auto trial = [&] { Opened(opened_->path).ReadThrough(name); };
    if (!SurvivesApart(trial, TrialLimits(opened_->size)))
        throw AccessError("it is damaged");
    return opened_->Open(name);
}

}  // namespace kv
