#pragma once

#include <string>

// The message behind the info button next to the rake: how simple the rake model is.
namespace RakeInformation {

// "Info about Rake"
std::string title();

// The message text, ending in a request for feedback to `supportAddress`.
std::string text(const std::string& supportAddress);

} // namespace RakeInformation
