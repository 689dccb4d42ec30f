#include "tools/browser/texts.h"

#include "tools/report.h"
#include "tools/short_number.h"

#include <type_traits>

namespace paramdb::browser {

QString Shown(std::wstring_view text) {
    return QString::fromStdString(tools::Printable(text));
}

QString CellText(ConstField field) {
    return field.Visit([]<class T>(T const& value) {
        if constexpr (std::is_same_v<T, CFixedText>)
            return Shown(value.view());
        else if constexpr (std::is_floating_point_v<T>)
            return QString::fromStdString(tools::ShortNumber(value));
        else
            return QString::number(value);
    });
}

QString Tip(QString const& text) {
    return text.isEmpty() ? text : QStringLiteral("<span>%1</span>").arg(text.toHtmlEscaped());
}

QString Count(std::size_t number) {
    return QString::fromStdString(tools::Grouped(number));
}

} // namespace paramdb::browser
