#include "evfe/RakeInformation.h"

namespace RakeInformation {

std::string title() {
    return "Info about Rake";
}

std::string text(const std::string& supportAddress) {
    return "This rake calculation is simplified.<br/><br/>Actions, which do not lead to a fold, "
           "will be raked with the pot multiplied by the rake %. Of course, this is not exact, "
           "as the different sites use different rounding types and may also use incremental "
           "or linear systems.<br/><br/>If you are interested into exact rake calculations, "
           "please feedback us by writing on facebook or at " +
           supportAddress +
           ", so that we will integrate it, when many people wish for this feature.";
}

} // namespace RakeInformation
