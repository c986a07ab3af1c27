// What the callback of the registration is told: names, order, procedures and triples.
#include <set>

#include "tests/support/SupportOperations.h"

namespace {

class RegistrationTest : public ModuleTest {};

TEST_F(RegistrationTest, HandsOverAllOperationsInOrder) {
    const std::vector<REGISTERED>& registered = Module().registered;
    ASSERT_EQ(registered.size(), 131U);
    ASSERT_EQ(AllFacts().size(), 131U);
    for (std::size_t i = 0; i < registered.size(); ++i) {
        const OPERATION_FACTS& facts = AllFacts()[i];
        EXPECT_EQ(registered[i].name, facts.name) << "at place " << i + 1;
        EXPECT_EQ(registered[i].size, facts.size) << facts.name;
        EXPECT_EQ(registered[i].direction, facts.direction) << facts.name;
        EXPECT_EQ(registered[i].reserved, 0) << facts.name;
    }
}

TEST_F(RegistrationTest, OnlySecondNamesShareAProcedure) {
    std::set<EVENT_PROC> procedures;
    for (const REGISTERED& operation : Module().registered) {
        const std::string& secondOf = FactsOf(operation.name).secondOf;
        if (!secondOf.empty()) {
            EXPECT_EQ(operation.procedure, Operation(secondOf)) << operation.name;
        } else {
            EXPECT_TRUE(procedures.insert(operation.procedure).second) << operation.name;
        }
    }
    EXPECT_EQ(procedures.size(), 126U);
}

}  // namespace
