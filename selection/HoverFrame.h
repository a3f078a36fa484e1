#pragma once

class QString;
class QWidget;

// The look shared by the floating tips of the range lines and the hand table: a window with
// a translucent ground whose content sits in a rounded, light frame (a child named
// "wrapper"). Gives `window` the object name `objectName`, the translucent and
// show-without-activating attributes, and a style sheet of the frame's rules followed by
// `extraRules`; lays the frame out to fill `window` and returns it, for the content's layout.
QWidget* buildHoverFrame(QWidget* window, const QString& objectName, const QString& extraRules);
