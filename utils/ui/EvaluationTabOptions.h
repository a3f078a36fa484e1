#pragma once

// The option "Hide Empty Lines in Evaluation Tabs" as the window stores it: the key
// "removeEmptyLinesFromBoardEvaluationTabs" of the group "optionmenu", default true. The
// window writes it the moment the option is toggled; the board tabs read it at every
// rebuild of their rows, and the window when it starts.
//
// Stores written when the option was read under "optionMenu" may still hold it there
// (stores with case-blind keys never told the two apart); that value counts only while
// "optionmenu" has none, so the window's own choice always wins.
class EvaluationTabOptions {
public:
    static bool hidesEmptyLines();
};
