#include "clients/rtf/code_pages.h"

#include <map>

#include <unicode/ucnv.h>

#include "base/text.h"

namespace kv::rtf {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

const std::map<int, int> kCodePageOfCharset = {
    {77, kMacintosh}, {128, 932},  {129, 949},  {130, 1361}, {134, 936},  {136, 950},
    {161, 1253},      {162, 1254}, {163, 1258}, {177, 1255}, {178, 1256}, {186, 1257},
    {204, 1251},      {222, 874},  {238, 1250}, {254, 437},  {255, 850},
};

std::string ConverterName(int codePage) {
    constexpr int kUtf8 = 65001;
    if (codePage == kMacintosh) {
        return "macintosh";
    }
    return codePage == kUtf8 ? "UTF-8" : "cp" + std::to_string(codePage);
}

}  // namespace

int CodePageOfCharset(int charset) {
    const auto page = kCodePageOfCharset.find(charset);
    return page == kCodePageOfCharset.end() ? 0 : page->second;
}

bool IsDoubleByte(int codePage) {
    return codePage == 932 || codePage == 936 || codePage == 949 || codePage == 950 || codePage == 1361;
}

std::string Decode(std::string_view bytes, int codePage) {
    std::string text(bytes.size() * 4 + 4, '\0');
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length =
        ucnv_convert("UTF-8", ConverterName(codePage).c_str(), text.data(), static_cast<int32_t>(text.size()),
                     bytes.data(), static_cast<int32_t>(bytes.size()), &status);
    if (U_FAILURE(status)) {
        return codePage == kWestern ? ToUtf8(bytes) : Decode(bytes, kWestern);
    }
    text.resize(static_cast<std::size_t>(length));
    return ReplaceAll(text, "\x1A", kReplacement);  // what some code pages give for a byte without meaning
}

}  // namespace kv::rtf
