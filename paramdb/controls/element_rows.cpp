#include <paramdb/controls/element_rows.h>

#include <stdexcept>

namespace {

// Not that of std::bitset, whose text depends on the standard library.
bool HasRow(paramdb::ElementMask mask, int element) {
    if (element < 0 || element >= Clavis::ElementCount)
        throw std::out_of_range("invalid bitset position");
    return mask[static_cast<std::size_t>(element)];
}

} // namespace

namespace paramdb {

int RowOfElement(ElementMask mask, int element) {
    if (!HasRow(mask, element))
        return -1;
    int row = 0;
    for (int before = 0; before < element; ++before)
        row += HasRow(mask, before);
    return row;
}

int ElementOfRow(ElementMask mask, int row) {
    if (row < 0)
        return -1;
    int element = 0;
    for (int left = row;; ++element) {
        if (HasRow(mask, element) && left-- == 0)
            return element;
    }
}

} // namespace paramdb
