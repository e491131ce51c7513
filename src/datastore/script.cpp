#include "datastore/script.h"

#include "base/text.h"
#include "datastore/dialect/lexer.h"

namespace kv {
namespace {

std::string WithoutRemarks(std::string_view script) {
    std::string text;
    for (const std::string& line : Split(script, '\n')) {
        if (TrimView(line).substr(0, 2) != "--")
            text += line;
        text += '\n';
    }
    return text;
}

}  // namespace

std::vector<std::string> SplitScript(std::string_view script) {
    const std::string text = WithoutRemarks(script);
    const dialect::Lexed lexed = dialect::Lex(text);
    std::vector<std::string> statements;
    std::size_t first = 0;
    for (std::size_t i = 0; i < lexed.tokens.size(); ++i) {
        const bool closes = lexed.tokens[i].symbol == dialect::Symbol::Semicolon;
        if (!closes && lexed.tokens[i].kind != dialect::TokenKind::End)
            continue;
        if (i > first)
            statements.push_back(
                text.substr(lexed.tokens[first].begin, lexed.tokens[i].begin - lexed.tokens[first].begin));
        first = i + 1;
    }
    return statements;
}

}  // namespace kv
