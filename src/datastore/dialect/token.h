#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "datastore/value.h"

namespace kv::dialect {

/// Words that mean something in some place. Nearly all of them are column names in other places ("group",
/// "date", "order"), so a token keeps its text and the parser decides.
enum class Keyword : std::uint8_t {
    None,
    All,
    And,
    As,
    Asc,
    Between,
    By,
    Constraint,
    Create,
    Cross,
    Default,
    Delete,
    Desc,
    Distinct,
    Drop,
    Exists,
    False,
    From,
    Full,
    Group,
    Having,
    In,
    Index,
    Inner,
    Insert,
    Into,
    Is,
    Join,
    Key,
    Left,
    Like,
    Mod,
    Not,
    Null,
    On,
    Or,
    Order,
    Outer,
    Primary,
    Right,
    Select,
    Set,
    Table,
    Top,
    True,
    Union,
    Unique,
    Update,
    Values,
    Where,
};

enum class Symbol : std::uint8_t {
    None,
    LeftParen,
    RightParen,
    Comma,
    Point,
    Semicolon,
    Star,
    Plus,
    Minus,
    Slash,
    Backslash,
    Ampersand,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
};

enum class TokenKind : std::uint8_t {
    Word,       ///< a bare name or keyword
    Bracketed,  ///< [a name]
    Number,
    Text,  ///< 'x' or "x"
    Date,  ///< #2026/01/31#
    Symbol,
    Bad,  ///< an opened quote, bracket or date that is never closed, or a character that no statement has
    End,
};

/// A piece of the statement, known by its place in the text.
struct Token {
    TokenKind kind = TokenKind::End;
    Keyword keyword = Keyword::None;
    Symbol symbol = Symbol::None;
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
    /// The literal's number among those that were taken out of the shape; -1 for one that belongs to it.
    std::int32_t slot = -1;
};

/// A statement cut into tokens. Statements that differ only in their literals have the same shape, and what
/// was worked out for one serves the other; the literals' types are part of the shape.
struct Lexed {
    std::string_view text;
    std::vector<Token> tokens;  ///< closed by one of kind End
    std::string shape;
    std::vector<Value> literals;
    /// False where a token is Bad: such a text never parses.
    bool sound = true;

    std::string_view TextOf(const Token& token) const {
        return text.substr(token.begin, token.end - token.begin);
    }
};

}  // namespace kv::dialect
