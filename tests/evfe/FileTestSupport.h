#pragma once

#include <string>

// The golden files of the EV/FE file tests, under tests/evfe/data.
std::string evfeDataPath(const std::string& name);
// The whole file as it is on disk; a test fails when it cannot be read.
std::string readDataFile(const std::string& name);
