// Where contexts have their origins.

#include <span>
#include <utility>

#include "../base/error.h"
#include "contexts.h"
#include "drawing_context.h"
#include "shapes.h"

namespace {

using kawin::ContextState;
using kawin::CutCoordinate;
using kawin::DrawingContext;
using kawin::FindContext;

BOOL ReadPoint(HDC context, POINT ContextState::*member, LPPOINT target) noexcept {
    const auto found = FindContext(context);
    if (!found) {
        return FALSE;
    }
    if (target == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    *target = found->state.*member;
    return TRUE;
}

BOOL SetPoint(HDC context, POINT ContextState::*member, POINT value, LPPOINT before) noexcept {
    const auto found = FindContext(context);
    if (!found) {
        return FALSE;
    }
    const POINT old = std::exchange(found->state.*member, value);
    if (before != nullptr) {
        *before = old;
    }
    return TRUE;
}

BOOL MovePoint(HDC context, POINT ContextState::*member, POINT by, LPPOINT before) noexcept {
    POINT now;
    return ReadPoint(context, member, &now) &&
           SetPoint(context, member, {CutCoordinate(std::int64_t{now.x} + by.x), CutCoordinate(std::int64_t{now.y} + by.y)},
                    before);
}

// Moves points by the origins as `way` does.
BOOL Translate(HDC context, LPPOINT points, int count, POINT (DrawingContext::*way)(POINT) const noexcept) noexcept {
    const auto found = FindContext(context);
    if (!found) {
        return FALSE;
    }
    if (count < 0 || (points == nullptr && count > 0)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    for (POINT& point : std::span(points, static_cast<std::size_t>(count))) {
        point = ((*found).*way)(point);
    }
    return TRUE;
}

}  // namespace

BOOL SetBrushOrgEx(HDC context, int x, int y, LPPOINT before) noexcept {
    return SetPoint(context, &ContextState::brush_origin, {x, y}, before);
}

BOOL GetBrushOrgEx(HDC context, LPPOINT origin) noexcept {
    return ReadPoint(context, &ContextState::brush_origin, origin);
}

BOOL SetWindowOrgEx(HDC context, int x, int y, LPPOINT before) noexcept {
    return SetPoint(context, &ContextState::window_origin, {x, y}, before);
}

BOOL GetWindowOrgEx(HDC context, LPPOINT origin) noexcept {
    return ReadPoint(context, &ContextState::window_origin, origin);
}

BOOL OffsetWindowOrgEx(HDC context, int dx, int dy, LPPOINT before) noexcept {
    return MovePoint(context, &ContextState::window_origin, {dx, dy}, before);
}

BOOL SetViewportOrgEx(HDC context, int x, int y, LPPOINT before) noexcept {
    return SetPoint(context, &ContextState::viewport_origin, {x, y}, before);
}

BOOL GetViewportOrgEx(HDC context, LPPOINT origin) noexcept {
    return ReadPoint(context, &ContextState::viewport_origin, origin);
}

BOOL OffsetViewportOrgEx(HDC context, int dx, int dy, LPPOINT before) noexcept {
    return MovePoint(context, &ContextState::viewport_origin, {dx, dy}, before);
}

BOOL LPtoDP(HDC context, LPPOINT points, int count) noexcept {
    return Translate(context, points, count, &DrawingContext::ToDevice);
}

BOOL DPtoLP(HDC context, LPPOINT points, int count) noexcept {
    return Translate(context, points, count, &DrawingContext::ToLogical);
}

BOOL MoveToEx(HDC context, int x, int y, LPPOINT before) noexcept {
    return SetPoint(context, &ContextState::position, {x, y}, before);
}

BOOL GetCurrentPositionEx(HDC context, LPPOINT position) noexcept {
    return ReadPoint(context, &ContextState::position, position);
}
