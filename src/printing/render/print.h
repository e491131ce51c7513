#pragma once
#include <QPrinter>
#include <filesystem>

#include "printing/render/page_layout.h"

namespace kv {

/// Prints the pages from one to another, both included, on the printer as it is set up. False where the
/// printer refused.
bool PrintPages(const PageLayout& layout, QPrinter& printer, int from, int to);

/// Writes all pages as a PDF whose text can be searched. Throws std::system_error where the file can't be
/// written; the file is then left as it was.
void SavePdf(const PageLayout& layout, const std::filesystem::path& file);

}  // namespace kv
