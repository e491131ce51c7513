#pragma once
#include <vector>

#include "tool/demo/model.h"
#include "tool/demo/rows.h"

namespace kv::demo {

/// Writes what is kept of a client in rows of its own: skills, diagnosis codes, call types, plan of care,
/// extra information, required dates, documents, and the caregivers who should not visit.
class AttributeWriter {
  public:
    AttributeWriter(Database& work, Database& code, const Calendar& calendar);
    void Write(int place, const Client& client, const World& world, Random random);
    void WriteTemplate(const Client& client, Random& random);

  private:
    void WriteLists(const Client& client, Random& random);
    void WriteCarePlan(const Client& client, Random& random);
    void WriteExtras(const Client& client, Random& random);
    void WriteRequired(const Client& client, Random& random);
    void WriteDocuments(const Client& client, Random& random);
    void WriteBans(const Client& client, const World& world, Random& random);

    const Calendar& calendar_;
    std::vector<long> extraIds_, requirementIds_;
    TableFiller misc_, carePlan_, personnel_, required_, documents_, bans_;
};

}  // namespace kv::demo
