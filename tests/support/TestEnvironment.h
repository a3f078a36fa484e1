#pragma once

#include <string>

namespace TestEnvironment {

// Points HOME and XDG_CONFIG_HOME at a fresh temporary folder for this process, so that
// QSettings("Velmara", "Quorvane") and every other per-user file of a test stay private.
// Call before the Qt application object exists. Returns the folder.
std::string isolateUserFolders();

// The folder where tests put what a person should look at (screenshots):
// <build>/test-output, created on demand.
std::string outputFolder();

// The build folder (where the programs are), the source tree and the shared folder beside it (hand histories and the like).
std::string buildFolder();
std::string sourceFolder();
std::string sharedFolder();

} // namespace TestEnvironment
