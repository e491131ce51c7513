#pragma once
#include <filesystem>
#include <string>
#include <vector>

#include "clients/directions.h"
#include "matching/client_needs.h"

namespace kv {

/// A node of a person's tree.
struct DetailNode {
    std::string text;
    bool expired = false;
    std::vector<DetailNode> children;
};

/// What FRMdisdetail shows of a client or caregiver. All but the id that was asked for is empty where there
/// is no such person.
struct PersonDetail {
    std::string id;
    std::vector<LabelledText> rows;
    std::vector<DetailNode> tree;
    std::string notes;  ///< rich text or plain
    std::filesystem::path picture;
    std::string name;  ///< "Last, First"
    PostalAddress address;
};

/// A step that fails is passed over: what it was to show stays empty.
PersonDetail DescribeClient(Session& session, const std::string& client);
PersonDetail DescribeCaregiverInFull(Session& session, const std::string& emp_id);

/// The page of the way between two addresses, and the text that goes with a map of one's own search.
std::string VisitDirections(const MapServers& servers, PostalAddress from, PostalAddress to);
std::string VisitAddresses(const PostalAddress& from, const PostalAddress& to);

}  // namespace kv
