#include "datastore/engine/postgres/pg_values.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "base/numbers.h"
#include "base/text.h"
#include "datastore/convert.h"
#include "datastore/engine/postgres/pg_types.h"
#include "datastore/engine_error.h"

namespace kv::postgres {
namespace {

constexpr std::int64_t kMicroseconds = 1000000;
constexpr std::int64_t kSecondsADay = 86400;
/// 2000-01-01, from which the server counts.
constexpr std::int64_t kServersFirstDay = 36526;
/// The first and last moments of the calendar, 0100-01-01 and 9999-12-31 23:59:59.
constexpr double kFirstMoment = -657434;
constexpr double kLastMoment = 2958465 + 86399.0 / 86400.0;

/// Whole numbers stand in the server's form with the high byte first.
template <typename Number>
Number BigEndian(const char* bytes) {
    Number number = 0;
    for (std::size_t i = 0; i < sizeof(Number); ++i)
        number = static_cast<Number>((number << 8) | static_cast<unsigned char>(bytes[i]));
    return number;
}

std::int64_t Whole(const char* bytes, int length) {
    switch (length) {
        case 2:
            return static_cast<std::int16_t>(BigEndian<std::uint16_t>(bytes));
        case 4:
            return static_cast<std::int32_t>(BigEndian<std::uint32_t>(bytes));
        case 8:
            return static_cast<std::int64_t>(BigEndian<std::uint64_t>(bytes));
        default:
            return 0;
    }
}

/// A number of the server's decimal form: digits to the base of 10,000, the first of them worth 10,000 to the
/// power of `weight`.
double Decimal(const char* bytes) {
    constexpr int kHead = 8;
    constexpr std::uint16_t kNegative = 0x4000;
    constexpr std::uint16_t kOrdinary = 0x4000;  // signs above it: not a number, infinity
    const int count = BigEndian<std::uint16_t>(bytes);
    const int weight = static_cast<std::int16_t>(BigEndian<std::uint16_t>(bytes + 2));
    const auto sign = BigEndian<std::uint16_t>(bytes + 4);
    if (sign > kOrdinary)
        return std::nan("");
    // In ten-thousandths money is whole, so that it comes out as the number nearest to it.
    double units = 0;
    for (int i = 0; i < count; ++i)
        units = units * 10000 +
                BigEndian<std::uint16_t>(bytes + kHead + std::size_t{2} * static_cast<std::size_t>(i));
    const int power = weight - count + 1;
    const double number = power >= 0 ? units * std::pow(10000.0, power) : units / std::pow(10000.0, -power);
    return sign == kNegative ? -number : number;
}

double SerialOfMicroseconds(std::int64_t microseconds) {
    const std::int64_t seconds = microseconds / kMicroseconds - (microseconds % kMicroseconds < 0 ? 1 : 0);
    const std::int64_t days = seconds / kSecondsADay - (seconds % kSecondsADay < 0 ? 1 : 0);
    const std::int64_t rest = seconds - days * kSecondsADay;
    return static_cast<double>(days + kServersFirstDay) + static_cast<double>(rest) / kSecondsADay;
}

void RequireStorable(const std::string& text) {
    if (text.find('\0') != std::string::npos || !IsUtf8(text))
        throw EngineError(engine_error::kTypeConversion,
                          "Data type conversion error: the text holds a character that the database server "
                          "can't keep.");
}

std::string ParameterText(const Value& value) {
    switch (value.Type()) {
        case ValueType::Boolean:
            return value.ToBoolean() ? "true" : "false";
        case ValueType::Date:
            return MomentText(value.ToDate());
        case ValueType::Text:
            RequireStorable(*value.IfText());
            return *value.IfText();
        default:
            return value.ToText();
    }
}

}  // namespace

std::string MomentText(Date moment) {
    return IsoText(Date(std::clamp(moment.Serial(), kFirstMoment, kLastMoment)));
}

Bound::Bound(std::span<const Value> values) : texts_(values.size()), pointers_(values.size(), nullptr) {
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (values[i].IsNull())
            continue;
        texts_[i] = ParameterText(values[i]);
        pointers_[i] = texts_[i].c_str();
    }
}

std::size_t Bound::Bytes() const {
    std::size_t bytes = 0;
    for (const std::string& text : texts_)
        bytes += text.size();
    return bytes;
}

void RequireStorable(std::span<const Value> values) {
    for (const Value& value : values)
        if (const std::string* text = value.IfText())
            RequireStorable(*text);
}

void AppendCopyRow(std::string& rows, std::span<const Value> values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i > 0)
            rows += '\t';
        if (values[i].IsNull()) {
            rows += "\\N";
            continue;
        }
        for (const char c : ParameterText(values[i])) {
            switch (c) {
                case '\\':
                    rows += "\\\\";
                    break;
                case '\t':
                    rows += "\\t";
                    break;
                case '\n':
                    rows += "\\n";
                    break;
                case '\r':
                    rows += "\\r";
                    break;
                default:
                    rows += c;
            }
        }
    }
    rows += '\n';
}

RowKey WholeAt(const PGresult* result, int row, int column) {
    if (PQgetisnull(result, row, column) != 0)
        return kNoRow;
    return Whole(PQgetvalue(result, row, column), PQgetlength(result, row, column));
}

std::string TextAt(const PGresult* result, int row, int column) {
    return {PQgetvalue(result, row, column), static_cast<std::size_t>(PQgetlength(result, row, column))};
}

CellReader::CellReader(const PGresult* result) : result_(result) {
    for (int column = 0; column < PQnfields(result); ++column)
        types_.push_back(PQftype(result, column));
}

void CellReader::Read(RowBlock& block, RowBlock::Cell& cell, int row, int column) const {
    if (PQgetisnull(result_, row, column) != 0)
        return;
    const char* bytes = PQgetvalue(result_, row, column);
    const int length = PQgetlength(result_, row, column);
    const auto whole = [&](std::int64_t number) {
        cell.kind = RowBlock::Kind::Integer;
        cell.integer = number;
    };
    const auto real = [&](double number) {
        cell.kind = RowBlock::Kind::Real;
        cell.integer = std::bit_cast<std::int64_t>(number);
    };
    switch (types_[static_cast<std::size_t>(column)]) {
        case types::kBoolean:
            return whole(bytes[0] != 0 ? -1 : 0);
        case types::kShort:
        case types::kLong:
        case types::kBig:
            return whole(Whole(bytes, length));
        case types::kDouble:
            return real(std::bit_cast<double>(BigEndian<std::uint64_t>(bytes)));
        case types::kSingle:
            return real(std::bit_cast<float>(BigEndian<std::uint32_t>(bytes)));
        case types::kNumeric:
            return real(Decimal(bytes));
        case types::kTimestamp:
            return real(SerialOfMicroseconds(Whole(bytes, length)));
        case types::kDay:
            return real(static_cast<double>(Whole(bytes, length) + kServersFirstDay));
        default:
            return block.SetText(cell, {bytes, static_cast<std::size_t>(length)});
    }
}

}  // namespace kv::postgres
