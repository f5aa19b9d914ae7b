#pragma once

// The classes that every program finds registered: "Button", "Static" and the dialogs'.

namespace kawin {

// Registers them, as global classes, with RegisterSystemClass. Called once, before the first look-up of a class.
void RegisterSystemClasses();

}  // namespace kawin
