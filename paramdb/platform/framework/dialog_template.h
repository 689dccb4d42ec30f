// What a dialog looks like: its title, its size and its controls by number, in dialog units (a quarter of the
// average character's width, an eighth of its height), in the language in force.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/cstring.h>

#include <vector>

// One control of a dialog.
struct CDialogItem {
    enum class Kind { button, default_button, list };

    Kind kind;
    int id;
    CString text; // of a button
    int x, y, width, height;
};

struct CDialogTemplate {
    unsigned int id = 0;
    CString title;
    CString font;
    int font_size = 0; // in points
    int width = 0, height = 0;
    std::vector<CDialogItem> items; // in the order of the keyboard
};

namespace paramdb {

// The template of a number, with the texts of the language in force; empty, with the id 0, on a miss. Any
// thread.
[[nodiscard]] PARAMDB_API CDialogTemplate FindDialogTemplate(unsigned int id);

} // namespace paramdb
