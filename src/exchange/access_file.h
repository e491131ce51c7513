#pragma once
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "datastore/catalogue.h"

namespace kv {

/// What can't be read of an Access file, in words for the operator.
class AccessError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// One table of an Access file and its rows, read front to back, one at a time. Lives no longer than its
/// file.
class AccessTable {
  public:
    ~AccessTable();
    AccessTable(AccessTable&&) noexcept;

    /// The columns that are taken, the primary key, the indexes and the counter. What the file requires of a
    /// column is left out: rows that were written before it was required may lack it, and all are to be kept.
    const TableInfo& Info() const;
    /// One line for each column that is not taken: "column picture: binary content is not kept".
    const std::vector<std::string>& Untaken() const;
    /// The number of rows that the file says it holds.
    long StatedRows() const;

    /// Reads the next row's values in the order of the columns; false behind the last. Null and empty text
    /// are told apart. Dates are to the second, money exact. Throws AccessError for a row or page that can't
    /// be read; the next call goes on behind it.
    bool Next(std::vector<Value>& values);

  private:
    friend class AccessFile;
    struct Reader;
    explicit AccessTable(std::unique_ptr<Reader> reader);
    std::unique_ptr<Reader> reader_;
};

/// An Access file (Jet 3 and 4, and what came after), opened for reading alone. The library below it may
/// crash on a damaged file; so the list of tables, and each table before its rows are given out, is first
/// read to its end in a process of its own, and what crashes there or comes to no end counts as damaged.
class AccessFile {
  public:
    /// Throws AccessError when the file can't be read, is no Access file or its list of tables is damaged.
    explicit AccessFile(const std::filesystem::path& path);
    ~AccessFile();
    AccessFile(AccessFile&&) noexcept;

    const std::filesystem::path& Path() const;
    /// The users' tables; what the file keeps for itself (MSys...) is not among them.
    const std::vector<std::string>& TableNames() const;
    /// One line for each entry of the list of tables that can't be read: linked tables, which lie in another
    /// file, and damaged ones.
    const std::vector<std::string>& Untaken() const;
    /// Throws AccessError when the table is too damaged to be read at all. One table is read at a time.
    AccessTable OpenTable(const std::string& name) const;

  private:
    struct Opened;
    std::unique_ptr<Opened> opened_;
};

}  // namespace kv
