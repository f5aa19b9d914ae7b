#include "brush_object.h"

#include "describe.h"

namespace kawin {

int BrushObject::Describe(int capacity, void* target) const noexcept {
    return DescribeBy(description, capacity, target);
}

int PenObject::Describe(int capacity, void* target) const noexcept {
    return DescribeBy(description, capacity, target);
}

}  // namespace kawin
