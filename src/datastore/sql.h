#pragma once
#include <concepts>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "datastore/value.h"

namespace kv {

/// A piece of statement text that is joined as it stands: an order-by list, a condition made by another
/// routine.
struct Raw {
    std::string text;
};
/// A text whose apostrophes are doubled when it is joined. The documents' paths are the one place for it.
struct DoubledApostrophes {
    std::string text;
};
/// Quoted texts joined by commas, for an IN list.
struct TextList {
    std::vector<std::string> texts;
};
/// The same of whole numbers.
struct NumberList {
    std::vector<long> numbers;
};

/// One value on its way into a statement.
class SqlArgument {
  public:
    SqlArgument(Raw raw) : text_(std::move(raw.text)) {}
    SqlArgument(const DoubledApostrophes& text);
    SqlArgument(const TextList& list);
    SqlArgument(const NumberList& list);
    SqlArgument(std::string_view text);
    SqlArgument(const std::string& text) : SqlArgument(std::string_view(text)) {}
    SqlArgument(const char* text) : SqlArgument(std::string_view(text)) {}
    SqlArgument(bool value);
    SqlArgument(double number);
    template <std::integral T>
    SqlArgument(T number) : text_(std::to_string(number)) {}
    SqlArgument(Currency amount);
    SqlArgument(Date date);
    SqlArgument(const Value& value);

    const std::string& Text() const { return text_; }

  private:
    std::string text_;
};

std::string JoinSql(std::string_view pattern, std::initializer_list<SqlArgument> arguments);

/// Joins values into a statement or a criteria text, one for each "{}": Sql("client = {} and st_date > {}",
/// id, today.DayNumber()). A text is put in single quotes, numbers and dates are joined as typed values. A
/// text that holds an apostrophe makes the statement fail here with EngineError 3075, as it always did: the
/// program refuses the character where it matters, and a value can never change what its statement means.
template <typename... Arguments>
std::string Sql(std::string_view pattern, const Arguments&... arguments) {
    return JoinSql(pattern, {SqlArgument(arguments)...});
}

}  // namespace kv
