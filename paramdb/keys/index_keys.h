// The key classes of the tables.
//
// Keys of integers compare element by element as signed numbers, names by their code units; the first
// difference decides. -1 in an element means that it is not set.
#pragma once

#include <paramdb/keys/fixed_text.h>
#include <paramdb/keys/value_base.h>

#include <array>
#include <compare>
#include <concepts>
#include <cstddef>
#include <tuple>
#include <utility>

// What keys of `Size` integers share.
template <std::size_t Size>
class QIdxBase : public QValueBase {
public:
    static constexpr std::size_t size() { return Size; }

    // One element; the index must be below size().
    int& operator[](std::size_t index) { return m_elements[index]; }
    int operator[](std::size_t index) const { return m_elements[index]; }
    // The elements in order.
    std::array<int, Size> const& elements() const { return m_elements; }

    // References to the elements in order.
    auto tuple() {
        return std::apply([](auto&... elements) { return std::tie(elements...); }, m_elements);
    }
    auto tuple() const {
        return std::apply([](auto&... elements) { return std::tie(elements...); }, m_elements);
    }

    friend auto operator<=>(QIdxBase const& left, QIdxBase const& right) {
        return left.m_elements <=> right.m_elements;
    }
    friend bool operator==(QIdxBase const& left, QIdxBase const& right) {
        return left.m_elements == right.m_elements;
    }

protected:
    QIdxBase() { m_elements.fill(-1); }
    template <std::convertible_to<int>... Elements>
    requires(sizeof...(Elements) == Size) QIdxBase(Elements... elements)
        : m_elements{static_cast<int>(elements)...} {}

private:
    std::array<int, Size> m_elements;
};

class QIdx1 : public QIdxBase<1> {
public:
    QIdx1() = default;
    QIdx1(int element) : QIdxBase(element) {}
};

class QIdx2 : public QIdxBase<2> {
public:
    QIdx2() = default;
    QIdx2(int first, int second) : QIdxBase(first, second) {}
};

class QIdx3 : public QIdxBase<3> {
public:
    QIdx3() = default;
    QIdx3(int first, int second, int third) : QIdxBase(first, second, third) {}
};

class QIdx4 : public QIdxBase<4> {
public:
    QIdx4() = default;
    QIdx4(int first, int second, int third, int fourth) : QIdxBase(first, second, third, fourth) {}
};

class QIdx5 : public QIdxBase<5> {
public:
    QIdx5() = default;
    QIdx5(int first, int second, int third, int fourth, int fifth)
        : QIdxBase(first, second, third, fourth, fifth) {}
};

class QIdx6 : public QIdxBase<6> {
public:
    QIdx6() = default;
    QIdx6(int first, int second, int third, int fourth, int fifth, int sixth)
        : QIdxBase(first, second, third, fourth, fifth, sixth) {}
};

// A number and a position. A position that is no number is neither less nor greater than any other.
class QIdxIF : public QValueBase {
public:
    QIdxIF() = default;
    QIdxIF(int number, float position) : m_number(number), m_position(position) {}

    int number() const { return m_number; }
    float position() const { return m_position; }

    auto tuple() { return std::tie(m_number, m_position); }
    auto tuple() const { return std::tie(m_number, m_position); }

    friend std::partial_ordering operator<=>(QIdxIF const& left, QIdxIF const& right) {
        return left.tuple() <=> right.tuple();
    }
    friend bool operator==(QIdxIF const& left, QIdxIF const& right) { return left.tuple() == right.tuple(); }

private:
    int m_number = -1;
    float m_position = 0;
};

// A name of at most 199 characters.
class QIdxName : public QValueBase {
public:
    QIdxName() = default;
    QIdxName(CFixedText name) : m_name(std::move(name)) {}
    QIdxName(wchar_t const* name) : m_name(name) {}

    CFixedText const& name() const { return m_name; }
    operator wchar_t const*() const { return m_name; }

    auto tuple() { return std::tie(m_name); }
    auto tuple() const { return std::tie(m_name); }

    friend auto operator<=>(QIdxName const& left, QIdxName const& right) {
        return left.m_name <=> right.m_name;
    }
    friend bool operator==(QIdxName const& left, QIdxName const& right) {
        return left.m_name == right.m_name;
    }

private:
    CFixedText m_name;
};
