#include "datastore/connection_text.h"

#include <gmock/gmock.h>

namespace kv {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(ConnectionText, ToldFromOtherTextsAndByItsPassword) {
    struct Case {
        const char* text;
        bool meant, sound, password;
    };
    const Case cases[] = {
        {"host=db.office dbname=agency user=agency", true, true, false},
        {" host = db", true, true, false},
        {"service=agency passfile=/home/ann/own", true, true, false},
        {"postgresql://agency@db.office:5433/agency?sslmode=require", true, true, false},
        {"host=db password=secret", true, true, true},
        {"password = 'sec ret' host=db", true, true, true},
        {"host=db password=''", true, true, false},
        {"host=db sslkey=own.key sslpassword=secret", true, true, true},
        {"postgresql://agency:secret@db/agency", true, true, true},
        {"postgres://db/agency?user=agency&password=secret", true, true, true},
        {"postgresql://agency:@db/agency", true, true, false},
        {"postgresql://agency:sec%20ret@db/agency", true, true, true},
        // What is in a name.
        {"host=db dbname='password=x'", true, true, false},
        {"postgresql://password@db/password", true, true, false},
        // Meant for a server and wrong.
        {"host=db pasword=secret", true, false, false},
        {"postgresql://agency:secret@[db/agency", true, false, false},
        // Not meant for one.
        {"", false, true, false},
        {"agency", false, false, false},
        {"./year=2026", false, false, false},
        {"year=2026", false, false, false},
        {"ftp://db/agency", false, false, false},
    };
    for (const Case& c : cases) {
        const ConnectionText read = ReadConnectionText(c.text);
        EXPECT_EQ(read.meant, c.meant) << c.text;
        EXPECT_EQ(read.fault.empty(), c.sound) << c.text << ": " << read.fault;
        EXPECT_EQ(read.holdsPassword, c.password) << c.text;
        EXPECT_THAT(read.fault, Not(HasSubstr("secret"))) << "is shown";
        EXPECT_THAT(read.fault, Not(HasSubstr("\n")));
    }
}

}  // namespace
}  // namespace kv
