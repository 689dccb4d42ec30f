// Texts of the data as the window shows them: in one line, numbers in their shortest form, as the command
// prints them. Any thread.
#pragma once

#include <paramdb/tables/field.h>

#include <QtCore/QString>
#include <string_view>

namespace paramdb::browser {

// Control characters, also line ends and tabs, become U+FFFD.
[[nodiscard]] QString Shown(std::wstring_view text);
[[nodiscard]] QString CellText(ConstField field);

// A text for a tool tip, which would otherwise take a tag such as <TMode> for markup. Empty for no text.
[[nodiscard]] QString Tip(QString const& text);

// "12 345", the digits in groups.
[[nodiscard]] QString Count(std::size_t number);

} // namespace paramdb::browser
