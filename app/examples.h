// The collection of worked examples that comes with the program.
#pragma once

#include <string>

namespace korvinth::app {

// The bytes of the collection file, which is a part of the program.
std::string ExampleCollection();

}  // namespace korvinth::app
