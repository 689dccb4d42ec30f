// What the tests of the derived structures share: a set of tables of their own, messages, and random numbers.
#pragma once

#include <paramdb/distillery/param_distillery.h>

#include <cstddef>
#include <gtest/gtest.h>
#include <initializer_list>
#include <random>
#include <string>
#include <tests/support/messages.h>
#include <vector>

namespace derivation {

class Random {
public:
    explicit Random(unsigned seed) : m_engine(seed) {}

    int Between(int low, int high) {
        auto const count = static_cast<unsigned>(high - low) + 1;
        return low + static_cast<int>(static_cast<unsigned>(m_engine()) % count);
    }
    bool OneIn(int count) { return Between(1, count) == 1; }
    template <class T>
    T const& Pick(std::vector<T> const& values) {
        return values[static_cast<std::size_t>(Between(0, static_cast<int>(values.size()) - 1))];
    }

private:
    std::mt19937 m_engine;
};

/// Tables that no load fills, and the messages of what works on them.
class DerivationTest : public testing::Test {
protected:
    void AddNames(CDynNameIdTable& table, std::initializer_list<int> ids) {
        for (int const id : ids)
            table.Add(id, (L"name " + std::to_wstring(id)).c_str());
    }

    CQtParamDistillery distillery;
    CParamTables& tables = distillery.Tables();
    MessageLog messages;
};

/// The rows of a table as values that can be compared.
template <class Table>
std::vector<std::wstring> Rows(Table const& table) {
    std::vector<std::wstring> rows;
    auto const append = [](std::wstring& text, auto const& fields) {
        for (auto const& field : fields)
            field.Visit([&text](auto const& value) {
                if constexpr (requires { std::to_wstring(value); })
                    text += std::to_wstring(value) + L' ';
                else
                    text += std::wstring(value.view()) + L' ';
            });
    };
    table.VisitRows([&](auto key, auto row) {
        append(rows.emplace_back(), key);
        rows.back() += L"| ";
        append(rows.back(), row);
        return true;
    });
    return rows;
}

} // namespace derivation
