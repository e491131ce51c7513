#pragma once
#include <string>

namespace kv {

/// What the database server's library makes of a text that may be one of its connection strings: keywords
/// ("host=db dbname=agency") or an address ("postgresql://db/agency"). Nothing is connected to.
struct ConnectionText {
    /// It is meant for a server, right or wrong: an address, or its first keyword is one of the library's.
    bool meant = false;
    /// Why the library can't read it; empty when it can.
    std::string fault;
    bool holdsPassword = false;
};

ConnectionText ReadConnectionText(const std::string& text);

}  // namespace kv
