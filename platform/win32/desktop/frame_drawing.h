#pragma once

// Edges, boxes and marks, as windows and controls have them. Coordinates are logical; right and bottom lie just outside. All fail
// (FALSE) with ERROR_INVALID_HANDLE for what is no device context, and ERROR_INVALID_PARAMETER for a null rectangle.

#include "../gdi/gdi_types.h"

// Edges: one pixel outside, one inside.
constexpr UINT BDR_RAISEDOUTER = 0x0001;
constexpr UINT BDR_SUNKENOUTER = 0x0002;
constexpr UINT BDR_RAISEDINNER = 0x0004;
constexpr UINT BDR_SUNKENINNER = 0x0008;
constexpr UINT BDR_OUTER = 0x0003;
constexpr UINT BDR_INNER = 0x000C;
constexpr UINT BDR_RAISED = 0x0005;
constexpr UINT BDR_SUNKEN = 0x000A;
constexpr UINT EDGE_RAISED = BDR_RAISEDOUTER | BDR_RAISEDINNER;
constexpr UINT EDGE_SUNKEN = BDR_SUNKENOUTER | BDR_SUNKENINNER;
constexpr UINT EDGE_ETCHED = BDR_SUNKENOUTER | BDR_RAISEDINNER;
constexpr UINT EDGE_BUMP = BDR_RAISEDOUTER | BDR_SUNKENINNER;

constexpr UINT BF_LEFT = 0x0001;
constexpr UINT BF_TOP = 0x0002;
constexpr UINT BF_RIGHT = 0x0004;
constexpr UINT BF_BOTTOM = 0x0008;
constexpr UINT BF_TOPLEFT = BF_TOP | BF_LEFT;
constexpr UINT BF_TOPRIGHT = BF_TOP | BF_RIGHT;
constexpr UINT BF_BOTTOMLEFT = BF_BOTTOM | BF_LEFT;
constexpr UINT BF_BOTTOMRIGHT = BF_BOTTOM | BF_RIGHT;
constexpr UINT BF_RECT = 0x000F;
constexpr UINT BF_MIDDLE = 0x0800;  // the inside is filled
constexpr UINT BF_SOFT = 0x1000;    // as on buttons
constexpr UINT BF_ADJUST = 0x2000;  // the rectangle becomes what is inside
constexpr UINT BF_FLAT = 0x4000;
constexpr UINT BF_MONO = 0x8000;

// An inner edge counts only beside an outer one or alone; both of one place, and diagonals, are refused (FALSE).
KADATA_API BOOL DrawEdge(HDC context, LPRECT rect, UINT edge, UINT flags) noexcept;

// Boxes.
constexpr UINT DFC_CAPTION = 1;
constexpr UINT DFC_BUTTON = 4;

constexpr UINT DFCS_CAPTIONCLOSE = 0x0000;
constexpr UINT DFCS_CAPTIONMIN = 0x0001;
constexpr UINT DFCS_CAPTIONMAX = 0x0002;
constexpr UINT DFCS_CAPTIONRESTORE = 0x0003;
constexpr UINT DFCS_CAPTIONHELP = 0x0004;
constexpr UINT DFCS_BUTTONCHECK = 0x0000;
constexpr UINT DFCS_BUTTONRADIO = 0x0004;
constexpr UINT DFCS_BUTTON3STATE = 0x0008;  // with DFCS_CHECKED: neither checked nor not
constexpr UINT DFCS_BUTTONPUSH = 0x0010;
constexpr UINT DFCS_INACTIVE = 0x0100;
constexpr UINT DFCS_PUSHED = 0x0200;
constexpr UINT DFCS_CHECKED = 0x0400;
constexpr UINT DFCS_TRANSPARENT = 0x0800;  // the background of a mark stays
constexpr UINT DFCS_HOT = 0x1000;
constexpr UINT DFCS_ADJUSTRECT = 0x2000;  // the rectangle becomes what is inside of a push button
constexpr UINT DFCS_FLAT = 0x4000;
constexpr UINT DFCS_MONO = 0x8000;

// A box of a caption, or a push button's face, a check box or a radio button, drawn in the largest square in the middle. FALSE
// with ERROR_INVALID_PARAMETER for other kinds.
KADATA_API BOOL DrawFrameControl(HDC context, LPRECT rect, UINT kind, UINT state) noexcept;

// A dotted rectangle one pixel wide, exclusive-ored: drawn twice it is gone.
KADATA_API BOOL DrawFocusRect(HDC context, const RECT* rect) noexcept;
