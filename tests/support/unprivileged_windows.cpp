#include "unprivileged.h"
#include "wine.h"

namespace test {

// The system asks for rights whoever the user is; Wine as root does not.
UnprivilegedScope::UnprivilegedScope() : active_(!RunsOnWine()), switched_(false) {}

UnprivilegedScope::~UnprivilegedScope() = default;

}  // namespace test
