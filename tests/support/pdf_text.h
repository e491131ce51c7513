#pragma once
#include <filesystem>
#include <string>
#include <vector>

namespace kv::test {

/// The text of a PDF file page by page, as a reader sees it, in lines of words with one blank between;
/// empty lines are left out. Read by pdftotext, not by the code that wrote the file.
std::vector<std::string> PdfPages(const std::filesystem::path& file);

}  // namespace kv::test
