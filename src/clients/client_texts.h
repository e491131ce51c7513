#pragma once
#include <array>
#include <string_view>
#include <vector>

namespace kv {

inline constexpr std::size_t kSectionCount = 13;  ///< IMGCommand 0..12
inline constexpr std::size_t kPartCount = 7;      ///< CMDclient 0..6

extern const std::array<std::string_view, kSectionCount> kSectionTips;
extern const std::array<std::string_view, kPartCount> kPartTips;

/// The items that never change of a list box or combo, or the headings of a grid, by control name.
struct FixedList {
    std::string_view control;
    std::vector<std::string_view> items;
    std::string_view text;  ///< the item shown at first, or ""
};
const std::vector<FixedList>& FixedLists();
/// The list of a control; throws std::out_of_range for a control that has none.
const FixedList& FixedListOf(std::string_view control);

/// What a box is called in a country, and its mask where the country has one.
struct CountryText {
    std::string_view control;
    std::string_view caption;
    std::string_view mask;
};
/// The boxes whose words differ between the United States and Canada.
const std::vector<CountryText>& CountryTexts(bool canada);

}  // namespace kv
