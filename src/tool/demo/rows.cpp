#include "tool/demo/rows.h"

namespace kv::demo {

TableFiller::TableFiller(Database& database, std::string_view table)
    : recordset_(database.OpenRecordset(table)) {
    if (const TableInfo* info = database.Tables().Find(table)) {
        counter_ = info->Counter();
    }
}

std::size_t TableFiller::Place(std::size_t position, const char* name) {
    if (position >= places_.size()) {
        places_.resize(position + 1, {nullptr, 0});
    }
    auto& [known, index] = places_[position];
    if (known != name) {
        index = recordset_.FieldIndex(name);
        known = name;
    }
    return index;
}

long TableFiller::Add(std::initializer_list<Column> row) {
    recordset_.AddNew();
    std::size_t position = 0;
    for (const Column& column : row) {
        recordset_.Set(Place(position++, column.name), column.value);
    }
    const long sequence = counter_ ? static_cast<long>(recordset_.Get(*counter_).ToInteger()) : 0;
    recordset_.Update();
    ++rows_;
    return sequence;
}

Date TimeOf(int minutes) {
    const int minute = ((minutes % 1440) + 1440) % 1440;
    return Date::FromTime(minute / 60, minute % 60);
}

Value DayOrNull(long day) {
    return day == 0 ? Value() : Value(Date(static_cast<double>(day)));
}

}  // namespace kv::demo
