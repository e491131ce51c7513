#pragma once
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/plain_form.h"
#include "support/test_agency.h"

namespace kv::test {

/// An agency with the lists that a client's boxes are chosen from, and a clock at 2026-03-04 09:30.
class ClientTest : public ::testing::Test {
  protected:
    ClientTest() {
        const char* const lists[][3] = {
            {"main.PROVIDERS SEX", "X", "Any Gender"},
            {"main.LANGUAGE", "LT", "Latin"},
            {"main.DISCIPLINE", "NU", "Nursing"},
            {"main.BOROUGH", "", "Hill Side"},
            {"main.SEX", "U", "Unknown"},
            {"main.MANAGER", "M1", "Mary Major"},
            {"main.MANAGER", "M2", "Mike Minor"},
            {"main.FSL", "S1", "Sue Super"},
            {"main.DIET", "D1", "No Salt"},
            {"main.COLOR_RESULT", "RED", "Red"},
            {"main.COLOR_RESULT", "BLU", "Blue"},
        };
        Transaction all = agency.Code().BeginTransaction();
        for (const auto& [table, code, description] : lists) {
            agency.Insert(table, {{"code", code}, {"description", description}});
        }
        all.Commit();
    }

    /// An active client whose required boxes are filled.
    void AddClient(const std::string& id, const Cells& more = {}) {
        Cells cells = {{"PROV_SEX", "X"}, {"LANGUAGE", "LT"}, {"ORD_DISCPL", "NU"}};
        cells.insert(cells.end(), more.begin(), more.end());
        agency.Client(id, "Last" + id, "First", cells);
    }

    TestAgency agency;
    Session& session = agency.session();
};

using Lines = std::vector<std::string>;

}  // namespace kv::test
