#pragma once
#include <QtWidgets>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>
