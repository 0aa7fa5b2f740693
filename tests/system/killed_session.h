// The session that is killed: random steps in the program's windows, told on stdout.
//   seen STATE      the program has started and shows this
//   begin STATE     a step begins that leads to this
//   save STATE      ... and saves the collection
//   told TEXT       something that nobody should be told
//   done MS         the step is over, at this time
//   alive MS        the session goes on
#pragma once

#include <filesystem>

namespace korvinth::app {

// Until the process is killed or the program closed. False when the windows show what they should
// not. Needs the toolkit's application object.
bool RunSession(const std::filesystem::path& home, unsigned seed);

}  // namespace korvinth::app
