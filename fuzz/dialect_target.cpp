// Any text as a statement, as criteria ("?source|criteria") and as a script: the parser accepts or refuses it
// with an EngineError, both engines' generators write what it accepted, and the embedded engine understands
// what was written.
#include <array>
#include <map>

#include "datastore/dialect/binder.h"
#include "datastore/dialect/lexer.h"
#include "datastore/dialect/parser.h"
#include "datastore/engine/connection.h"
#include "datastore/engine/generator.h"
#include "datastore/engine/postgres/pg_generator.h"
#include "datastore/engine/sqlite/sqlite_generator.h"
#include "datastore/schema.h"
#include "datastore/script.h"
#include "datastore/small_database.h"
#include "fuzz/target.h"

namespace kv {
namespace {

constexpr std::size_t kLongest = 4096;
/// A product of more tables may have more rows than anybody waits for.
constexpr std::size_t kMostSources = 4;
constexpr long kRowsWalked = 20;

/// The tables that the statements run on: the small ones of the store's own tests, with rows, and the
/// suite's.
struct Databases {
    Databases() {
        for (const std::string& name : SchemaNames())
            if (name != "tempassign")
                all.push_back(
                    small.workspace.CreateDatabase(small.places.Place("fuzz_" + name), SchemaScript(name)));
        all.push_back(small.database);
    }
    test::SmallDatabase small;
    std::vector<DatabasePtr> all;
};

Databases& Open() {
    static Databases databases;
    return databases;
}

void CheckTokens(const dialect::Lexed& lexed) {
    Expect(!lexed.tokens.empty() && lexed.tokens.back().kind == dialect::TokenKind::End,
           "no token closes the text");
    std::size_t at = 0;
    for (const dialect::Token& token : lexed.tokens) {
        Expect(token.begin >= at && token.end >= token.begin && token.end <= lexed.text.size(),
               "a token out of place");
        Expect(token.slot < static_cast<std::int32_t>(lexed.literals.size()), "a literal that is not there");
        at = token.end;
    }
}

void Generate(const Generator& generator, const dialect::Statement& statement) {
    if (const auto* select = std::get_if<dialect::Select>(&statement)) {
        SelectForm form;
        form.keys = select->Keyed();
        form.fields = Generator::AllFields(*select);
        generator.Select(*select, form);
        generator.CountRows(*select);
        if (!select->Keyed())
            return;
        form.rows = SelectForm::Rows::ByKey;
        generator.Select(*select, form);
    } else if (const auto* insert = std::get_if<dialect::Insert>(&statement)) {
        generator.Insert(*insert, nullptr);
    } else if (const auto* update = std::get_if<dialect::Update>(&statement)) {
        generator.Update(*update);
    } else if (const auto* deletion = std::get_if<dialect::Delete>(&statement)) {
        generator.Delete(*deletion);
    }
}

/// The statement bound to the tables and written for both engines; nothing where it is refused.
std::optional<dialect::Statement> Understood(std::string_view text, const Catalogue& tables) {
    const dialect::Lexed lexed = dialect::Lex(text);
    CheckTokens(lexed);
    std::optional<dialect::Statement> statement;
    const bool sound = Succeeds([&] {
        statement = dialect::ParseStatement(lexed);
        dialect::Bind(*statement, tables);
    });
    if (!sound)
        return std::nullopt;
    Generate(SqliteGenerator(), *statement);
    Generate(postgres::PgGenerator(), *statement);
    return statement;
}

void Walk(Recordset rows) {
    for (long row = 0; row < kRowsWalked && !rows.Eof(); ++row, rows.MoveNext())
        for (std::size_t field = 0; field < rows.Fields().size(); ++field)
            rows.Get(field);
}

void RunStatement(std::string_view text, Database& database) {
    const auto statement = Understood(text, database.Tables());
    if (!statement)
        return;
    if (const auto* select = std::get_if<dialect::Select>(&*statement)) {
        if (select->sources.size() > kMostSources)
            return;
        Succeeds([&] { Walk(database.OpenRecordset(text)); });
        Succeeds([&] { Walk(database.OpenRecordset(text, RecordsetType::Snapshot)); });
        Succeeds([&] { database.Lookup(text); });
        return;
    }
    const auto* insert = std::get_if<dialect::Insert>(&*statement);
    if (insert && insert->query && insert->query->sources.size() > kMostSources)
        return;
    Succeeds([&] {
        const Transaction undone = database.BeginTransaction();
        database.Execute(text);
    });
    database.Engine().RefreshTables();
}

void RunCriteria(std::string_view source, std::string_view criteria, Database& database) {
    const auto query =
        source.find(' ') == std::string_view::npos ? std::nullopt : Understood(source, database.Tables());
    if (query && std::holds_alternative<dialect::Select>(*query) &&
        std::get<dialect::Select>(*query).sources.size() > kMostSources)
        return;
    Succeeds([&] {
        Recordset rows = database.OpenRecordset(source);
        rows.FindFirst(criteria);
        rows.FindNext(criteria);
    });
}

void RunText(std::string_view text, Database& database) {
    if (text.substr(0, 1) == "?") {
        const std::size_t bar = std::min(text.find('|'), text.size() - 1);
        RunCriteria(text.substr(1, bar - 1), text.substr(bar + 1), database);
        return;
    }
    RunStatement(text, database);
}

}  // namespace
}  // namespace kv

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = FuzzInput(data, std::min(size, kv::kLongest)).Rest();
    for (const kv::DatabasePtr& database : kv::Open().all)
        kv::RunText(text, *database);
    const std::vector<std::string> statements = kv::SplitScript(text);
    if (statements.size() > 1)
        for (const std::string& statement : statements)
            kv::RunStatement(statement, *kv::Open().small.database);
    return 0;
}
