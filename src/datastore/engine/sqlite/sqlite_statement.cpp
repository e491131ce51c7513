#include "datastore/engine/sqlite/sqlite_statement.h"

#include <cmath>

#include "datastore/convert.h"
#include "datastore/engine/sqlite/sqlite_errors.h"

namespace kv::sqlite {
namespace {

constexpr std::size_t kMostIdle = 256;

}  // namespace

Statement StatementCache::Take(const std::string& sql) {
    if (const auto found = bySql_.find(sql); found != bySql_.end()) {
        const auto entry = found->second;
        Statement statement = std::move(*entry);
        bySql_.erase(found);
        idle_.erase(entry);
        return statement;
    }
    Statement statement{sql, nullptr};
    sqlite3_stmt* handle = nullptr;
    const int result = sqlite3_prepare_v3(database_, sql.data(), static_cast<int>(sql.size()),
                                          SQLITE_PREPARE_PERSISTENT, &handle, nullptr);
    statement.handle.reset(handle);
    Check(result, database_);
    return statement;
}

void StatementCache::GiveBack(Statement statement) {
    if (bySql_.count(statement.sql) != 0)
        return;  // two of one text ran at once; one is enough to keep
    idle_.push_front(std::move(statement));
    bySql_.emplace(idle_.front().sql, idle_.begin());
    if (idle_.size() > kMostIdle) {
        bySql_.erase(idle_.back().sql);
        idle_.pop_back();
    }
}

void StatementCache::Clear() {
    bySql_.clear();
    idle_.clear();
}

Loan::Loan(sqlite3* database, StatementCache& cache, const std::string& sql, std::span<const Value> values)
    : database_(database), cache_(cache), statement_(cache.Take(sql)) {
    BindAll(values);
}

void Loan::BindAll(std::span<const Value> values) {
    for (std::size_t i = 0; i < values.size(); ++i)
        Bind(static_cast<int>(i + 1), values[i]);
}

void Loan::Restart(std::span<const Value> values) {
    sqlite3_reset(Get());
    BindAll(values);
}

Loan::~Loan() {
    // What reset answers is the failure that the last step has reported already.
    sqlite3_reset(Get());
    sqlite3_clear_bindings(Get());
    cache_.GiveBack(std::move(statement_));
}

bool Loan::Step() {
    return Check(sqlite3_step(Get()), database_) == SQLITE_ROW;
}

void Loan::Bind(int place, const Value& value) {
    int result = SQLITE_OK;
    switch (value.Type()) {
        case ValueType::Null:
            result = sqlite3_bind_null(Get(), place);
            break;
        case ValueType::Boolean:
            result = sqlite3_bind_int(Get(), place, value.ToBoolean() ? -1 : 0);
            break;
        case ValueType::Integer:
            result = sqlite3_bind_int64(Get(), place, value.ToInteger());
            break;
        case ValueType::Double:
        case ValueType::Currency:
            result = sqlite3_bind_double(Get(), place, value.ToDouble());
            break;
        case ValueType::Date:
            result = sqlite3_bind_double(Get(), place, StoredSerial(value.ToDate()));
            break;
        case ValueType::Text: {
            const std::string& text = *value.IfText();
            result =
                sqlite3_bind_text64(Get(), place, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
            break;
        }
    }
    Check(result, database_);
}

}  // namespace kv::sqlite
