#pragma once
#include <string>
#include <string_view>

#include "clients/rtf/rich_text.h"
#include "printing/document/document.h"
#include "session/session.h"

namespace kv {

/// The plain text of notes: rich text without its marks (UTF-8, lines end in "\n"), any other text as it
/// stands. Damaged rich text gives what can be read of it.
std::string NotesText(std::string_view comments);

/// A stamp for the end of the notes: on a line of its own, protected, with the line that it opens behind it.
/// `notes` are the characters in front of it.
rtf::RichText::Characters StampOf(const rtf::RichText::Characters& notes, Date now);

/// Notes that were edited here, `mine`, while another seat edited them too, `theirs`; both began as `old`.
/// What was put in or taken out here is done to theirs at the same place where the text up to it is the same;
/// otherwise what was put in is added at the end. Stamps of theirs stay as they are.
std::string MergeNotes(std::string_view old, std::string_view mine, std::string_view theirs);

/// The stamps of the notes as they were loaded all stand in those that are stored now, in their order.
bool KeepsStamps(std::string_view loaded, std::string_view stored);
/// Throws 3426 where stamps of the notes as they were loaded are no longer those of the row: somebody edited
/// them outside this screen, and what is shown here must not bring them back.
void CheckStamps(std::string_view loaded, std::string_view stored);

/// The client as the printouts of this screen name it.
struct PrintedClient {
    std::string id, last, first, street, address2, apt, city, state, zip, phone;
};
/// "Client Notes Information".
Document NotesPrint(const PrintedClient& client, std::string_view comments);
/// "Client Direction Information"; without a picture it is left out.
Document DirectionsPrint(const PrintedClient& client, const std::string& picture,
                         const std::string& directions);

}  // namespace kv
