#pragma once
#include <string_view>
#include <vector>

#include "clients/pick_query.h"
#include "session/session.h"

namespace kv {

// frmEMPFIND: searches the caregivers.

/// Combo1; without the right to see it the SSN can't be searched by.
std::vector<std::string> CaregiverFindFields(bool mayViewSsn);
/// Combo2, and the item that it starts with.
const std::vector<std::string_view>& CaregiverFindStatuses();
inline constexpr const char* kCaregiverFindStatus = "Only Active Caregivers";
/// May the user see a caregiver's SSN (right EMPS)? Throws EngineError.
bool MayViewCaregiverSsn(Session& session);

/// The search of a field from its left, or without a text all caregivers of the status and group, by name. A
/// text with an apostrophe throws EngineError 3075.
std::string CaregiverFindStatement(const PickQuery& query);
/// Id, last name, first name, phone as "(###) ###-####", SSN, group, status code. Throws EngineError.
PickRows FindCaregivers(Session& session, const PickQuery& query);

}  // namespace kv
