// Rows in edit between recordsets, seats and programs.
#include <csignal>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "datastore/small_database.h"

namespace kv::test {
namespace {

constexpr const char* kRow = "select * from people where client = 'A01'";

class LockTest : public testing::Test {
  protected:
    LockTest() : theirs(otherSeat.OpenDatabase(small.Place())) {}

    static void Rename(Recordset& rows, const char* name) {
        rows.Edit();
        rows.Set("lastname", name);
        rows.Update();
    }
    std::string Name() { return small->Lookup("select lastname from people where client = 'A01'").ToText(); }

    SmallDatabase small;
    Workspace otherSeat;
    DatabasePtr theirs;
};

TEST_F(LockTest, ARowInEditIsRefusedToOthers) {
    // The other edit may be of another seat or of another screen of this one.
    for (Database* database : {theirs.get(), small.database.get()}) {
        Recordset holder = database->OpenRecordset(kRow);
        Recordset rows = small->OpenRecordset(kRow);
        holder.Edit();
        rows.Edit();
        rows.Set("lastname", "Mine");
        EXPECT_EQ(ErrorOf([&] { rows.Update(); }), 3186);
        EXPECT_EQ(rows.EditMode(), EditState::InProgress);
        EXPECT_EQ(ErrorOf([&] { rows.Delete(); }), 3186);
        Recordset neighbour = small->OpenRecordset("select * from people where client = 'A02'");
        Rename(neighbour, "Free");
        holder.CancelUpdate();
        Rename(rows, "Mine");
        EXPECT_EQ(Name(), "Mine");
        small->Execute("update people set lastname = 'Smith' where client = 'A01'");
    }
}

TEST_F(LockTest, EveryEndOfAnEditFreesItsRow) {
    Recordset rows = small->OpenRecordset(kRow);
    using Ending = std::function<void(Recordset&)>;
    const Ending endings[] = {
        [](Recordset& set) { set.Update(); },
        [](Recordset& set) { set.CancelUpdate(); },
        [](Recordset& set) { set.MoveNext(); },
        [](Recordset& set) { set.FindFirst("client = 'A01'"); },
        [](Recordset& set) { set.Requery(); },
        [](Recordset& set) { set.AddNew(); },
        [](Recordset& set) { set.Close(); },
        [](Recordset& set) { set = Recordset(); },
        [](Recordset& set) { set.Edit(), set.Close(); },
    };
    for (const Ending& end : endings) {
        Recordset holder = theirs->OpenRecordset(kRow);
        holder.Edit();
        end(holder);
        EXPECT_EQ(ErrorOf([&] { Rename(rows, "Free"); }), 0);
    }
}

TEST_F(LockTest, AnEditThatBeganUnlockedTellsOfAChange) {
    Recordset holder = theirs->OpenRecordset(kRow);
    Recordset rows = small->OpenRecordset(kRow);
    holder.Edit();
    rows.Edit();
    rows.Set("lastname", "Mine");
    holder.Set("firstnam", "Changed");
    holder.Update();
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), 3197);
    EXPECT_EQ(Name(), "Smith");
    rows.Update();  // the operator was told and goes on
    EXPECT_EQ(Name(), "Mine");
    EXPECT_EQ(rows.Text("firstnam"), "Changed");

    holder.Edit();
    rows.Edit();
    rows.Set("lastname", "Again");
    holder.CancelUpdate();
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), 0);  // nobody changed it
}

TEST_F(LockTest, ARowDeletedMeanwhileSaysSo) {
    Recordset rows = small->OpenRecordset(kRow);
    rows.Edit();
    rows.Set("lastname", "Mine");
    theirs->Execute("delete from people where client = 'A01'");  // statements do not look at edits
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), 3167);
    rows.CancelUpdate();
    EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), 3167);
    EXPECT_EQ(ErrorOf([&] { rows.Delete(); }), 3167);
}

/// Another program that holds the row in edit until it is killed.
class HoldingProgram {
  public:
    explicit HoldingProgram(const DatabasePlace& place) {
        int ready[2];
        EXPECT_EQ(::pipe(ready), 0);
        child_ = ::fork();
        if (child_ == 0) {
            Workspace workspace;
            const DatabasePtr database = workspace.OpenDatabase(place);
            Recordset rows = database->OpenRecordset(kRow);
            rows.Edit();
            rows.Set("lastname", "Never written");
            if (::write(ready[1], "1", 1) == 1)
                ::pause();
            ::_exit(1);
        }
        char byte = 0;
        EXPECT_EQ(::read(ready[0], &byte, 1), 1);
        ::close(ready[0]);
        ::close(ready[1]);
    }
    ~HoldingProgram() {
        if (child_ > 0)
            Kill();
    }
    HoldingProgram(const HoldingProgram&) = delete;
    HoldingProgram& operator=(const HoldingProgram&) = delete;

    void Kill() {
        ::kill(child_, SIGKILL);
        ::waitpid(child_, nullptr, 0);
        child_ = 0;
    }

  private:
    pid_t child_ = 0;
};

TEST(LockOfAProgram, VanishesWithIt) {
    SmallDatabase small;
    const DatabasePlace place = small.Place();
    small.database.reset();  // an open connection must not be carried into another program
    HoldingProgram program(place);
    small.database = small.workspace.OpenDatabase(place);
    Recordset rows = small->OpenRecordset(kRow);
    rows.Edit();
    rows.Set("lastname", "Mine");
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), 3186);
    program.Kill();
    rows.Update();
    EXPECT_EQ(rows.Text("lastname"), "Mine");
}

}  // namespace
}  // namespace kv::test
