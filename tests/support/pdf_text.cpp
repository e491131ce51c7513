#include "support/pdf_text.h"

#include <cstdio>
#include <memory>
#include <sstream>
#include <stdexcept>

#include "base/text.h"

namespace kv::test {

namespace {

std::string Output(const std::string& command) {
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        throw std::runtime_error("can't run " + command);
    }
    std::string out;
    char piece[4096];
    for (std::size_t size = 0; (size = fread(piece, 1, sizeof piece, pipe)) > 0;) {
        out.append(piece, size);
    }
    if (pclose(pipe) != 0) {
        throw std::runtime_error("failed: " + command);
    }
    return out;
}

std::string Tidy(const std::string& page) {
    std::istringstream lines(page);
    std::string out;
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string tidy;
        for (std::string word; words >> word;) {
            tidy += (tidy.empty() ? "" : " ") + word;
        }
        out += tidy.empty() ? "" : tidy + "\n";
    }
    return out;
}

}  // namespace

std::vector<std::string> PdfPages(const std::filesystem::path& file) {
    std::istringstream text(Output("pdftotext -layout -enc UTF-8 '" + file.string() + "' -"));
    std::vector<std::string> pages;
    // A form feed ends each page.
    for (std::string page; std::getline(text, page, '\f');) {
        pages.push_back(Tidy(page));
    }
    return pages;
}

}  // namespace kv::test
