#pragma once
#include <QString>
#include <set>
#include <string>
#include <vector>

#include "matching/client_needs.h"

class QWidget;

namespace kv {

class Grid;

/// A grid of labels and texts, without headings.
Grid* MakePairs(const char* name, const QString& words, QWidget* parent);
/// Shows them; the labels in `differing` stand out, with a word beside.
void ShowPairs(Grid& grid, const std::vector<LabelledText>& pairs,
               const std::set<std::string>& differing = {});

}  // namespace kv
