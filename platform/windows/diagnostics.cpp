#include "../diagnostics.h"

namespace kawin {

// Nothing comes: the system keeps its registry itself, and tells about it in its own event log.
void SetDiagnosticSink(DiagnosticSink /*sink*/) {}

}  // namespace kawin
