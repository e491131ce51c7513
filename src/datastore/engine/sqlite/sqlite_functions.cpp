#include "datastore/engine/sqlite/sqlite_functions.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <string_view>

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "datastore/convert.h"
#include "datastore/engine/sqlite/sqlite_errors.h"
#include "datastore/faults.h"
#include "datastore/like_pattern.h"

namespace kv::sqlite {
namespace {

/// The arguments and the answer of one call.
class Call {
  public:
    Call(sqlite3_context* context, sqlite3_value** arguments) : context_(context), arguments_(arguments) {}

    bool IsNull(int place) const { return sqlite3_value_type(arguments_[place]) == SQLITE_NULL; }
    bool IsText(int place) const { return sqlite3_value_type(arguments_[place]) == SQLITE_TEXT; }
    double Number(int place) const { return sqlite3_value_double(arguments_[place]); }
    int Whole(int place) const { return sqlite3_value_int(arguments_[place]); }
    Date When(int place) const { return Date(Number(place)); }
    std::string_view Text(int place) const {
        const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(arguments_[place]));
        return {text ? text : "", static_cast<std::size_t>(sqlite3_value_bytes(arguments_[place]))};
    }
    Value Any(int place) const {
        if (IsNull(place))
            return {};
        if (IsText(place))
            return {Text(place)};
        if (sqlite3_value_type(arguments_[place]) == SQLITE_INTEGER)
            return {static_cast<long long>(sqlite3_value_int64(arguments_[place]))};
        return {Number(place)};
    }

    void Answer(std::string_view text) const {
        sqlite3_result_text64(context_, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    }
    void Answer(double number) const { sqlite3_result_double(context_, number); }
    void AnswerWhole(std::int64_t number) const { sqlite3_result_int64(context_, number); }
    void AnswerNull() const { sqlite3_result_null(context_); }
    sqlite3_context* Context() const { return context_; }

  private:
    sqlite3_context* context_;
    sqlite3_value** arguments_;
};

// A format of Null is the empty text, where all others answer Null for Null.
void FormatDateCall(const Call& call) {
    call.Answer(call.IsNull(0) ? std::string() : FormatDate(call.When(0), call.Text(1)));
}
void FormatNumberCall(const Call& call) {
    call.Answer(call.IsNull(0) ? std::string() : FormatNumber(call.Number(0), call.Text(1)));
}
void FormatTextCall(const Call& call) {
    call.Answer(call.IsNull(0) ? std::string() : FormatText(call.Text(0), call.Text(1)));
}

void RightCall(const Call& call) {
    call.Answer(Right(call.Text(0), static_cast<std::size_t>(std::max(call.Whole(1), 0))));
}
void UpperCall(const Call& call) {
    call.Answer(Upper(call.Text(0)));
}
void LowerCall(const Call& call) {
    call.Answer(Lower(call.Text(0)));
}
void ValCall(const Call& call) {
    call.Answer(Val(call.Text(0)));
}
void IntCall(const Call& call) {
    call.Answer(std::floor(call.Number(0)));
}
void RoundCall(const Call& call) {
    call.AnswerWhole(Value(call.Number(0)).ToInteger());
}
void YearCall(const Call& call) {
    call.AnswerWhole(call.When(0).Civil().year);
}
void MonthCall(const Call& call) {
    call.AnswerWhole(call.When(0).Civil().month);
}
void DayCall(const Call& call) {
    call.AnswerWhole(call.When(0).Civil().day);
}
void WeekdayCall(const Call& call) {
    call.AnswerWhole(call.When(0).Weekday());
}
void DateSerialCall(const Call& call) {
    call.Answer(Date::FromCivil(call.Whole(0), call.Whole(1), call.Whole(2)).Serial());
}
void DateTextCall(const Call& call) {
    call.Answer(Value(call.When(0)).ToText());
}
void NumberTextCall(const Call& call) {
    call.Answer(NumberText(call.Number(0)));
}
void ToDateCall(const Call& call) {
    call.Answer(StoredSerial(call.Any(0).ToDate()));
}
void ToNumberCall(const Call& call) {
    call.Answer(call.Any(0).ToDouble());
}

/// A value on its way into a column: (value, column type, size).
void FitCall(const Call& call) {
    ColumnInfo column;
    column.type = static_cast<ColumnType>(call.Whole(1));
    column.size = call.Whole(2);
    const Value value = ConvertToColumn(call.Any(0), column);
    switch (value.Type()) {
        case ValueType::Null:
            return call.AnswerNull();
        case ValueType::Text:
            return call.Answer(*value.IfText());
        case ValueType::Boolean:
            return call.AnswerWhole(value.ToBoolean() ? -1 : 0);
        case ValueType::Integer:
            return call.AnswerWhole(value.ToInteger());
        case ValueType::Date:
            return call.Answer(value.ToDate().Serial());
        default:
            return call.Answer(value.ToDouble());
    }
}

/// The pattern is the same for all rows of a statement, so it is read once and kept with the statement.
void LikeCall(const Call& call) {
    auto* pattern = static_cast<LikePattern*>(sqlite3_get_auxdata(call.Context(), 1));
    if (pattern) {
        call.AnswerWhole(pattern->Matches(call.Text(0)) ? 1 : 0);
        return;
    }
    auto made = std::make_unique<LikePattern>(call.Text(1));
    call.AnswerWhole(made->Matches(call.Text(0)) ? 1 : 0);
    sqlite3_set_auxdata(call.Context(), 1, made.release(),
                        [](void* kept) { delete static_cast<LikePattern*>(kept); });
}

struct Function {
    const char* name = nullptr;
    int arguments = 0;
    void (*run)(const Call&) = nullptr;
    bool takesNull = false;
};

constexpr Function kFunctions[] = {
    {"kv_format_date", 2, FormatDateCall, true},
    {"kv_format_number", 2, FormatNumberCall, true},
    {"kv_format_text", 2, FormatTextCall, true},
    {"kv_fit", 3, FitCall, true},
    {"kv_like", 2, LikeCall},
    {"kv_right", 2, RightCall},
    {"kv_ucase", 1, UpperCall},
    {"kv_lcase", 1, LowerCall},
    {"kv_val", 1, ValCall},
    {"kv_int", 1, IntCall},
    {"kv_round", 1, RoundCall},
    {"kv_year", 1, YearCall},
    {"kv_month", 1, MonthCall},
    {"kv_day", 1, DayCall},
    {"kv_weekday", 1, WeekdayCall},
    {"kv_date_serial", 3, DateSerialCall},
    {"kv_date_text", 1, DateTextCall},
    {"kv_number_text", 1, NumberTextCall},
    {"kv_to_date", 1, ToDateCall},
    {"kv_to_number", 1, ToNumberCall},
};

void RunFunction(sqlite3_context* context, int count, sqlite3_value** arguments) {
    const auto* function = static_cast<const Function*>(sqlite3_user_data(context));
    const Call call(context, arguments);
    for (int i = 0; !function->takesNull && i < count; ++i)
        if (call.IsNull(i))
            return call.AnswerNull();
    // The engine is C: no exception may pass through it.
    try {
        function->run(call);
    } catch (const EngineError& error) {
        FailFunction(context, error);
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    } catch (const std::exception& error) {
        FailFunction(context, EngineError(engine_error::kReservedError, error.what()));
    }
}

int CompareTexts(void*, int aSize, const void* a, int bSize, const void* b) noexcept {
    return CompareText({static_cast<const char*>(a), static_cast<std::size_t>(aSize)},
                       {static_cast<const char*>(b), static_cast<std::size_t>(bSize)});
}

}  // namespace

void AddFunctions(sqlite3* database) {
    Check(sqlite3_create_collation_v2(database, "KVTEXT", SQLITE_UTF8, nullptr, CompareTexts, nullptr),
          database);
    for (const Function& function : kFunctions)
        Check(sqlite3_create_function_v2(database, function.name, function.arguments,
                                         SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS,
                                         const_cast<Function*>(&function), RunFunction, nullptr, nullptr,
                                         nullptr),
              database);
}

}  // namespace kv::sqlite
