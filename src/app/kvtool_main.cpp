#include <iostream>

#include "tool/tool.h"

int main(int count, char** arguments) {
    std::ios::sync_with_stdio(false);
    return kv::RunTool(std::vector<std::string>(arguments + 1, arguments + count), std::cout, std::cerr);
}
