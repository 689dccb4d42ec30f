#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/views/qt/qt_text.h>

#include <QtCore/QChar>
#include <algorithm>
#include <string>
#include <string_view>

namespace paramdb::qt {

namespace {

constexpr char32_t LastOfOneUnit = 0xFFFF;
constexpr char32_t Last = 0x10FFFF;

// The same for units that may be too wide.
QString FromWideUnits(std::wstring_view text) {
    QString result;
    for (wchar_t const wide : text) {
        auto const unit = static_cast<char32_t>(wide);
        if (unit <= LastOfOneUnit) {
            result.append(QChar(static_cast<char16_t>(unit)));
        } else if (unit <= Last) {
            result.append(QChar(QChar::highSurrogate(unit)));
            result.append(QChar(QChar::lowSurrogate(unit)));
        } else {
            result.append(QChar(QChar::ReplacementCharacter));
        }
    }
    return result;
}

} // namespace

QString ToQString(CString const& text) {
    std::wstring_view const units(text.GetString(), static_cast<std::size_t>(text.GetLength()));
    QString result(text.GetLength(), Qt::Uninitialized);
    QChar* to = result.data();
    for (wchar_t const wide : units) {
        auto const unit = static_cast<char32_t>(wide);
        if (unit > LastOfOneUnit)
            return FromWideUnits(units);
        *to++ = QChar(static_cast<char16_t>(unit));
    }
    return result;
}

CString FromQString(QString const& text) {
    std::wstring units(static_cast<std::size_t>(text.size()), L'\0');
    std::transform(text.begin(), text.end(), units.begin(),
                   [](QChar unit) { return static_cast<wchar_t>(unit.unicode()); });
    return CString(std::move(units));
}

QString FilterWord() {
    switch (CLibMgr::GetLanguage()) {
    case CLibMgr::Language::portuguese:
    case CLibMgr::Language::italian:
    case CLibMgr::Language::spanish:
        return QStringLiteral("Filtro");
    case CLibMgr::Language::czech:
        return QStringLiteral("Filtr");
    case CLibMgr::Language::french:
        return QStringLiteral("Filtre");
    case CLibMgr::Language::hungarian:
        return QString::fromUtf16(u"Sz\u0171r\u0151");
    case CLibMgr::Language::chinese:
        return QString::fromUtf16(u"\u7B5B\u9009");
    default:
        return QStringLiteral("Filter"); // English and German
    }
}

} // namespace paramdb::qt
