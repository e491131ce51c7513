#include "support/test_places.h"

#include "support/test_server.h"

namespace kv::test {

TestPlaces::TestPlaces() {
    if (!TestServer::Wanted())
        return;
    onServer_ = TestServer::Get().FreshName();
    TestServer::Get().MakeDatabase(onServer_);
}

TestPlaces::~TestPlaces() {
    if (!onServer_.empty())
        TestServer::Get().DropDatabase(onServer_);
}

DatabasePlace TestPlaces::Place(const std::string& name) const {
    if (!onServer_.empty())
        return {TestServer::Get().Connection(onServer_), name};
    return folder_.Path() / (name + ".mdb");
}

}  // namespace kv::test
