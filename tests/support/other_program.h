#pragma once
#include <memory>
#include <string>

#include <libpq-fe.h>

namespace kv::test {

/// Another program on the database server that knows nothing of this one, as one that comes through ODBC.
class OtherProgram {
  public:
    explicit OtherProgram(const std::string& server);
    /// The first field of the first row.
    std::string Ask(const std::string& sql);
    /// Cuts every connection but its own; answers when they are gone.
    void CutAll();

  private:
    std::unique_ptr<PGconn, decltype(&PQfinish)> connection_;
};

}  // namespace kv::test
