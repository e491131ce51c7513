#pragma once
#include <string>

#include "base/date.h"
#include "tool/demo/random.h"

// Sentences that an office would write.
namespace kv::demo {

inline constexpr const char* kCaregiverNotes[] = {
    "Prefers clients on a bus line. Punctual, liked by families.", "Asked for no cats. Good with transfers.",
    "Takes extra weekends on short notice.", "Studies on Tuesday evenings, don't call after five.",
    "Speaks softly, not a match for clients who are hard of hearing."};
inline constexpr const char* kClientNotes[] = {
    "Client's daughter called and is pleased with the morning aide.",
    "Spare key is with the neighbor in apartment 4, ask for it by name.",
    "Likes to be called by the first name. Tea before anything else.",
    "Family asks for a call the evening before any change of caregiver.",
    "Walker stands by the bed, the wheelchair is for trips outside.",
    "Insurance card was copied, the new one is valid from the first of the month.",
    "Doctor changed the evening dose; the sheet on the refrigerator is current."};
inline constexpr const char* kDirections[] = {
    "From the office take Chapel St to the second light, turn left at the pharmacy. House with the green "
    "porch.",
    "Bus 14 stops at the corner. Ring twice, the bell is faint.",
    "Park behind the building, the front is for residents only. Elevator to the third floor.",
    "Last house before the bridge. The dog is friendly."};
inline constexpr const char* kEventNotes[] = {
    "Spoke with the family, they agree with the new times.",
    "Client was not at home; neighbor says the ambulance came in the morning.",
    "Caregiver called in sick, the visit was covered from the float pool.",
    "Client's son asked for a different caregiver on Fridays.",
    "Slipped in the bathroom, no injury, the nurse was told and will visit.",
    "Thanked the aide for staying longer during the storm.",
    "Reviewed the plan of care at home, no changes needed."};
inline constexpr const char* kToDoSubjects[] = {"Ask for renewal of the authorization",
                                                "Birthday card",
                                                "Call family about holiday coverage",
                                                "Check signed timesheets",
                                                "Collect physician orders",
                                                "Follow up after hospital stay",
                                                "Review plan of care",
                                                "Send service agreement"};
inline constexpr const char* kMedications[] = {"Aspirin 81 mg mornings", "Eye drops twice a day",
                                               "Insulin by the nurse only", "Water pill mornings",
                                               "Pain reliever as needed"};
inline constexpr const char* kPopups[] = {"Do not ring after 8 PM", "Latex allergy",
                                          "Two persons for every transfer",
                                          "Call the daughter before each change"};

/// One paragraph as the notes keep it.
std::string RichText(const std::string& text);
/// A journal of notes: each entry below its protected date line, the oldest first.
std::string NoteJournal(Date now, Random& random);

}  // namespace kv::demo
