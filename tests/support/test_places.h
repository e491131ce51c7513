#pragma once
#include <string>

#include "datastore/workspace.h"
#include "support/test_agency.h"

namespace kv::test {

/// A place for databases of a test's own: a folder, or where the tests run on the server a database there.
class TestPlaces {
  public:
    TestPlaces();
    ~TestPlaces();
    TestPlaces(const TestPlaces&) = delete;
    TestPlaces& operator=(const TestPlaces&) = delete;
    DatabasePlace Place(const std::string& name) const;
    const TempFolder& Folder() const { return folder_; }

  private:
    TempFolder folder_;
    std::string onServer_;
};

}  // namespace kv::test
