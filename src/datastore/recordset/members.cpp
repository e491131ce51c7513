#include "datastore/recordset/members.h"

#include <algorithm>
#include <limits>

namespace kv {
namespace {

using Form = CompiledSelect::Form;

/// Room for keys that is set aside at once; it costs nothing before it is used.
constexpr RowKey kMostReserved = 1 << 18;
constexpr std::size_t kEverything = std::numeric_limits<std::size_t>::max();

}  // namespace

Members::Members(Connection& connection, std::shared_ptr<const CompiledSelect> query,
                 std::vector<Value> literals, bool snapshot)
    : connection_(connection),
      query_(std::move(query)),
      literals_(std::make_shared<const std::vector<Value>>(std::move(literals))),
      frozen_(snapshot || !query_->Keyed()),
      keys_(query_->KeyCount()),
      window_(connection_, *query_, *literals_),
      finder_(connection_, *query_) {
    if (frozen_)
        window_.Freeze();
}

// The parts of the copy refer to the connection, query and literals that both share.
Members::Members(const Members& other) = default;

std::unique_ptr<Cursor> Members::Query(const EngineSql& sql, std::span<const Value> given) {
    return connection_.Query(sql.text, ParameterValues(sql, *literals_, given, connection_.clock));
}

void Members::Fetch() {
    const std::int64_t stamp = connection_.Stamp(query_->Watch());
    keys_.Clear();
    const std::shared_ptr<const FieldSubset> fields = frozen_ ? query_->AllFields() : query_->UsedFields();
    window_.Begin(0, stamp, fields);
    finder_.Opened(stamp);
    counted_.reset();
    complete_ = true;
    if (!frozen_ && query_->IsWholeTable())
        return OpenWholeTable(stamp, fields);
    const auto cursor = Query(fields->Sql(FieldSubset::Form::OfQuery));
    window_.Take(*cursor, kEverything, keys_);
}

void Members::OpenWholeTable(std::int64_t stamp, const std::shared_ptr<const FieldSubset>& fields) {
    const auto cursor = Query(query_->Sql(Form::LastKey));
    cursor->Next();
    lastKey_ = cursor->Key(0);
    lastRead_ = kNoRow;
    openedAt_ = stamp;
    keys_.Reserve(static_cast<std::size_t>(std::clamp<RowKey>(lastKey_, 0, kMostReserved)));
    complete_ = lastKey_ == kNoRow;
    if (!complete_)
        Extend(fields);
}

/// Reads the next batch of a whole table, keys and values.
void Members::Extend(const std::shared_ptr<const FieldSubset>& fields) {
    const std::int64_t stamp = connection_.Stamp(query_->Watch());
    const std::size_t batch = window_.GrowBatch();
    const std::size_t before = keys_.Size();
    const Value given[] = {static_cast<long long>(lastRead_), static_cast<long long>(batch)};
    const auto cursor = Query(fields->Sql(FieldSubset::Form::NextRows), given);
    window_.Begin(before, stamp, fields);
    complete_ = window_.Take(*cursor, batch, keys_) < batch;
    std::size_t size = keys_.Size();
    while (size > before && keys_.One(size - 1) > lastKey_)
        --size;  // joined after the opening
    complete_ = complete_ || size < keys_.Size();
    keys_.Truncate(size);
    window_.Truncate(size);
    if (size > before)
        lastRead_ = keys_.One(size - 1);
    complete_ = complete_ || lastRead_ == lastKey_;
}

bool Members::Has(std::size_t position) {
    while (!complete_ && position >= keys_.Size())
        Extend(query_->UsedFields());
    return position < keys_.Size();
}

std::size_t Members::Count() {
    if (complete_)
        return keys_.Size();
    // While nothing was written the table has the rows that it had.
    if (connection_.Stamp(query_->Watch()) != openedAt_)
        return All().Size();
    if (!counted_) {
        const auto cursor = Query(query_->Sql(Form::Count));
        cursor->Next();
        counted_ = static_cast<std::size_t>(cursor->Key(0));
    }
    return *counted_;
}

const KeyList& Members::All() {
    if (complete_)
        return keys_;
    const Value given[] = {static_cast<long long>(lastRead_ + 1), static_cast<long long>(lastKey_)};
    RowBlock none;
    std::vector<RowKey> rest;
    const auto cursor = Query(query_->Sql(Form::RestKeys), given);
    const std::size_t rows = cursor->Fetch(kEverything, 1, 0, rest, none);
    keys_.AddAll(rest, rows);
    complete_ = true;
    return keys_;
}

void Members::Add(RowKey key) {
    keys_.Add({&key, 1});
    finder_.MembersChanged();
}

void Members::Remove(std::size_t position) {
    keys_.Remove(position);
    counted_.reset();
    window_.Drop();
    finder_.MembersChanged();
}

std::optional<std::size_t> Members::Find(std::string_view criteria, std::size_t from) {
    return finder_.Find(criteria, from, All(), *literals_);
}

}  // namespace kv
