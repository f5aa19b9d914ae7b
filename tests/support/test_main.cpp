#include <gtest/gtest.h>

#include "child_process.h"
#include "time_zone.h"

// The program is its own child (child_process.h).
int main(int argc, char** argv) {
    test::UseSystemZone();
    if (const std::optional<int> result = test::RunChild()) {
        return *result;
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
