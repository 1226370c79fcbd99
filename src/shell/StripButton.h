#pragma once

class KorButtonGroup;
class QAction;

/// A button of a strip: its number, its picture, the text "UPS" that it carries, and the usual key of what it
/// does; empty for none.
struct StripButton {
    int id;
    int bitmap;
    int prompt;
    const char* key = "";
};

/// Adds the button, and an action that presses it by its key and from menus. The strip owns the action.
QAction* addStripButton(KorButtonGroup& strip, const StripButton& button);
