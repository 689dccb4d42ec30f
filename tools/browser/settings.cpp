#include "tools/browser/settings.h"

#include <QtCore/QStringList>

namespace paramdb::browser {

CClavis Settings::Key() const {
    CClavis key;
    QStringList const numbers = m_store.value(KeyName).toString().split(u'/');
    for (int element = 0; element < Clavis::ElementCount && element < numbers.size(); ++element) {
        bool is_number = false;
        int const number = numbers[element].toInt(&is_number);
        if (is_number)
            key[element] = number;
    }
    return key;
}

void Settings::SetKey(CClavis const& key) {
    QStringList numbers;
    for (int element = 0; element < Clavis::ElementCount; ++element)
        numbers += QString::number(key[element]);
    m_store.setValue(KeyName, numbers.join(u'/'));
}

} // namespace paramdb::browser
