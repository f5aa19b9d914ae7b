#pragma once

// Tests of the process's own time zone want Central European rules (TZ=Europe/Berlin will do) and are skipped elsewhere.

namespace test {

// Before the first test: one zone for the system and the C run-time.
void UseSystemZone();

bool InCentralEurope();

}  // namespace test

#define SKIP_OUTSIDE_CENTRAL_EUROPE()                                            \
    if (!test::InCentralEurope()) {                                              \
        GTEST_SKIP() << "the process's time zone is not that of Central Europe"; \
    }
