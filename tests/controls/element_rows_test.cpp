#include <paramdb/controls/element_rows.h>

#include <gtest/gtest.h>
#include <stdexcept>
#include <vector>

namespace {

template <class Call>
std::string TextOfThrow(Call const& call) {
    try {
        call();
    } catch (std::out_of_range const& error) {
        return error.what();
    }
    return "nothing thrown";
}

TEST(ElementRows, EveryMask) {
    for (unsigned int bits = 0; bits < 64; ++bits) {
        std::vector<int> elements; // by row
        for (int element = 0; element < 6; ++element) {
            int const row = paramdb::RowOfElement(bits, element);
            if ((bits >> element & 1) == 0) {
                EXPECT_EQ(row, -1) << bits << " " << element;
                continue;
            }
            EXPECT_EQ(row, static_cast<int>(elements.size())) << bits << " " << element;
            elements.push_back(element);
        }
        for (std::size_t row = 0; row < elements.size(); ++row)
            EXPECT_EQ(paramdb::ElementOfRow(bits, static_cast<int>(row)), elements[row])
                << bits << " " << row;
        for (int const row : {static_cast<int>(elements.size()), 6, 1000}) {
            EXPECT_EQ(TextOfThrow([&] { static_cast<void>(paramdb::ElementOfRow(bits, row)); }),
                      "invalid bitset position");
        }
        for (int const row : {-1, -1000})
            EXPECT_EQ(paramdb::ElementOfRow(bits, row), -1);
        for (int const element : {6, 7, 1000, -1}) {
            EXPECT_EQ(TextOfThrow([&] { static_cast<void>(paramdb::RowOfElement(bits, element)); }),
                      "invalid bitset position");
        }
    }
}

} // namespace
