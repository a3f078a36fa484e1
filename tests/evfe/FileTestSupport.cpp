#include "FileTestSupport.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

std::string evfeDataPath(const std::string& name) {
    return std::string(QUORVANE_EVFE_DATA) + "/" + name;
}

std::string readDataFile(const std::string& name) {
    std::ifstream file(evfeDataPath(name), std::ios::binary);
    EXPECT_TRUE(file.good()) << "cannot read " << evfeDataPath(name);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}
