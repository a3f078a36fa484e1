#pragma once

#include "handstrength/HandGroup.h"

#include <QMetaType>

#include <string>
#include <vector>

// A schema as a plain value: its name and its groups. This is what the schema pool stores
// and what a schema selection hands to the board evaluation tabs.
struct HandGroupSchemaData {
    std::string name;
    std::vector<HandGroup> groups;
};

Q_DECLARE_METATYPE(HandGroupSchemaData)
