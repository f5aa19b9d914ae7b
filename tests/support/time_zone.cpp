#include "time_zone.h"

#include <windows.h>

namespace test {

bool InCentralEurope() {
    TIME_ZONE_INFORMATION zone{};
    return GetTimeZoneInformation(&zone) != TIME_ZONE_ID_INVALID && zone.Bias == -60 && zone.DaylightDate.wMonth == 3;
}

}  // namespace test
