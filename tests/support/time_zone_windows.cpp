#include <cstdlib>
#include <ctime>

#include "time_zone.h"

namespace test {

// Wine has its zone from TZ, but the C run-time reads another language there ("tzn[+|-]hh[dzn]"): without TZ it takes the
// system's.
void UseSystemZone() {
    _putenv_s("TZ", "");
    _tzset();
}

}  // namespace test
