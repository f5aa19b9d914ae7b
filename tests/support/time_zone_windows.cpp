#include <windows.h>

#include <cstdlib>
#include <ctime>

#include "time_zone.h"

namespace test {

// Wine has its zone from TZ, but the C run-time reads another language there ("tzn[+|-]hh[dzn]"): without TZ it takes the
// system's.
bool InCentralEurope() {
    _putenv_s("TZ", "");
    _tzset();
    TIME_ZONE_INFORMATION zone{};
    return GetTimeZoneInformation(&zone) != TIME_ZONE_ID_INVALID && zone.Bias == -60 && zone.DaylightDate.wMonth == 3;
}

}  // namespace test
