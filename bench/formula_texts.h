#pragma once

// What is evaluated by each. Apart from the code: a peer's header takes the name _T for itself.

// The same in every notation, of 8, 21, 45 and 117 characters.
inline const char* const FORMULAS[] = {
    "v1*2+0.5",
    "(v1+v2)*(3.25-v3)/2.5",
    "2.5*sin(v1)-0.125*(v2+v3)/(1+v1*v1)+cos(0.75)",
    "(v1-0.5)*(v1-0.5)+(v2+1.25)*(v2+1.25)-exp(-0.5*(v1*v1+v2*v2))*sin(3.1416*v3/180)+tan(v1/4)*100/(25.5+v3)-0.001*(v2-7)",
};

// Of v1, v2 and v3.
inline constexpr double FORMULA_X = 1.5, FORMULA_Y = -0.25, FORMULA_Z = 12;
