#include "exchange/jet_values.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

#include <fmt/format.h>
#include <glib.h>

#include "datastore/convert.h"

namespace kv::jet {
namespace {

constexpr int kMoneyScale = 4;

std::uint64_t Unsigned(std::string_view bytes) {
    std::uint64_t number = 0;
    for (std::size_t i = bytes.size(); i-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes[i]);
    return number;
}

std::vector<gunichar2> PlainUnits(std::string_view bytes) {
    std::vector<gunichar2> units;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        units.push_back(static_cast<gunichar2>(Unsigned(bytes.substr(i, 2))));
    return units;
}

/// Runs of one byte a character and of two, a zero byte between them.
std::optional<std::vector<gunichar2>> PackedUnits(std::string_view bytes) {
    std::vector<gunichar2> units;
    bool single = true;
    for (std::size_t i = 0; i < bytes.size();) {
        if (bytes[i] == '\0') {
            single = !single;
            ++i;
        } else if (single) {
            units.push_back(static_cast<unsigned char>(bytes[i++]));
        } else {
            if (i + 1 >= bytes.size())
                return std::nullopt;
            units.push_back(static_cast<gunichar2>(Unsigned(bytes.substr(i, 2))));
            i += 2;
        }
    }
    return units;
}

/// The digits of four words, the highest first, each with its own little end first.
std::string Digits(std::string_view bytes) {
    std::array<std::uint64_t, 4> words{};
    for (std::size_t i = 0; i < words.size(); ++i)
        words[i] = Unsigned(bytes.substr(4 * i, 4));
    std::string digits;  // the last one first
    while (std::any_of(words.begin(), words.end(), [](std::uint64_t word) { return word != 0; })) {
        std::uint64_t rest = 0;
        for (std::uint64_t& word : words) {
            rest = rest << 32 | word;
            word = rest / 10;
            rest %= 10;
        }
        digits += static_cast<char>('0' + rest);
    }
    return digits.empty() ? "0" : std::string(digits.rbegin(), digits.rend());
}

std::optional<Value> MoneyOf(const std::string& tenThousandths) {
    std::int64_t units = 0;
    const char* end = tenThousandths.data() + tenThousandths.size();
    if (std::from_chars(tenThousandths.data(), end, units).ec != std::errc())
        return std::nullopt;
    return Currency::FromTenThousandths(units);
}

}  // namespace

std::optional<std::string> Text(std::string_view bytes) {
    const bool packed = bytes.substr(0, 2) == "\xFF\xFE";
    if (!packed && bytes.size() % 2 != 0)
        return std::nullopt;
    auto units = packed ? PackedUnits(bytes.substr(2)) : PlainUnits(bytes);
    if (!units)
        return std::nullopt;
    while (!units->empty() && units->back() == 0)
        units->pop_back();
    if (units->empty())
        return std::string();
    const auto size = static_cast<glong>(units->size());
    glong read = 0;
    glong written = 0;
    const std::unique_ptr<gchar, decltype(&g_free)> text(
        g_utf16_to_utf8(units->data(), size, &read, &written, nullptr), &g_free);
    if (!text || read != size)
        return std::nullopt;
    return std::string(text.get(), static_cast<std::size_t>(written));
}

std::optional<std::string> CodedText(std::string_view bytes, iconv_t toUtf8) {
    constexpr std::size_t kMostUtf8 = 4;
    while (!bytes.empty() && bytes.back() == '\0')
        bytes.remove_suffix(1);
    std::string text(kMostUtf8 * bytes.size(), '\0');
    // It does not write to what it reads.
    char* in = const_cast<char*>(bytes.data());
    char* out = text.data();
    std::size_t unread = bytes.size();
    std::size_t room = text.size();
    iconv(toUtf8, nullptr, nullptr, nullptr, nullptr);
    if (bytes.find('\0') != std::string_view::npos ||
        iconv(toUtf8, &in, &unread, &out, &room) == static_cast<std::size_t>(-1))
        return std::nullopt;
    text.resize(text.size() - room);
    return text;
}

std::optional<Value> Money(std::string_view bytes) {
    if (bytes.size() != sizeof(std::int64_t))
        return std::nullopt;
    return Currency::FromTenThousandths(static_cast<std::int64_t>(Unsigned(bytes)));
}

std::optional<Value> Moment(std::string_view bytes) {
    // The days 0100-01-01 and 10000-01-01.
    constexpr double kFirst = -657434;
    constexpr double kBehindLast = 2958466;
    if (bytes.size() != sizeof(double))
        return std::nullopt;
    const auto serial = std::bit_cast<double>(Unsigned(bytes));
    if (!(serial > kFirst - 1 && serial < kBehindLast))
        return std::nullopt;
    const double day = std::trunc(serial);
    const double stored = StoredSerial(Date(day + std::fabs(serial - day)));
    if (stored >= kBehindLast)
        return std::nullopt;
    return Date(stored);
}

std::optional<Value> Guid(std::string_view bytes) {
    if (bytes.size() != 16)
        return std::nullopt;
    const auto tail = [&](std::size_t first, std::size_t count) {
        std::string text;
        for (const char byte : bytes.substr(first, count))
            text += fmt::format("{:02X}", static_cast<unsigned char>(byte));
        return text;
    };
    return fmt::format("{{{:08X}-{:04X}-{:04X}-{}-{}}}", Unsigned(bytes.substr(0, 4)),
                       Unsigned(bytes.substr(4, 2)), Unsigned(bytes.substr(6, 2)), tail(8, 2), tail(10, 6));
}

std::optional<Value> Decimal(std::string_view bytes, int scale, ValueType as) {
    constexpr int kMostScale = 28;
    if (bytes.size() != 17 || scale < 0 || scale > kMostScale)
        return std::nullopt;
    const std::string sign = bytes[0] == '\0' ? "" : "-";
    std::string digits = Digits(bytes.substr(1));
    if (as == ValueType::Currency) {
        digits.append(static_cast<std::size_t>(std::max(kMoneyScale - scale, 0)), '0');
        return MoneyOf(sign + digits);
    }
    const auto places = static_cast<std::size_t>(scale);
    if (digits.size() <= places)
        digits.insert(0, places + 1 - digits.size(), '0');
    if (scale > 0)
        digits.insert(digits.size() - places, 1, '.');
    return ConvertTo(Value(sign + digits), as);
}

std::optional<Value> Whole(std::string_view bytes) {
    const std::uint64_t number = Unsigned(bytes);
    switch (bytes.size()) {
        case 1:
            return static_cast<int>(number);
        case 2:
            return static_cast<int>(static_cast<std::int16_t>(number));
        case 4:
            return static_cast<int>(static_cast<std::int32_t>(number));
        default:
            return std::nullopt;
    }
}

std::optional<Value> Floating(std::string_view bytes) {
    double number = 0;
    if (bytes.size() == sizeof(float)) {
        const auto single = std::bit_cast<float>(static_cast<std::uint32_t>(Unsigned(bytes)));
        const std::string shortest = fmt::format("{}", single);
        if (std::from_chars(shortest.data(), shortest.data() + shortest.size(), number).ec != std::errc())
            return std::nullopt;
    } else if (bytes.size() == sizeof(double)) {
        number = std::bit_cast<double>(Unsigned(bytes));
    } else {
        return std::nullopt;
    }
    if (!std::isfinite(number))
        return std::nullopt;
    return number;
}

}  // namespace kv::jet
