// Settings of the toolkit that windows and pictures have in common.
#pragma once

#include <QCoreApplication>

namespace korvinth::app {

// True when a display is there for windows, or a platform of the toolkit is asked for by name.
bool HasDisplay();

// To be called before the toolkit's application object is made, so that the toolkit writes nothing
// to stderr: it wants a locale in UTF-8 and warns of what its surroundings lack.
void PrepareToolkit();

// German texts and numbers. The application object is there.
void UseGerman(QCoreApplication& application);

}  // namespace korvinth::app
