// What an order definition means: its positions after the expansion of a series, and how they pair up.
#pragma once

#include <paramdb/distillery/spec_interval_entry.h>

#include "tools/order_report.h"
#include "tools/order_text.h"

#include <utility>

namespace paramdb::tools {

struct OrderMeaning {
    using Position = QVSpecIntervalEntry::Definition;

    OrderText text;
    OrderVerdict verdict = OrderVerdict::Empty;
    std::vector<Position> positions;                            // those written first
    std::vector<std::pair<std::size_t, std::size_t>> intervals; // lower and upper, counted from 0

    // The first written position of the series; the number of written ones if there is none.
    std::size_t FirstOfSeries() const;
    bool HasSeries() const { return FirstOfSeries() < text.positions.size(); }
    // The harmonic up to which the series goes.
    std::size_t Harmonics() const;
};

OrderMeaning MeaningOf(std::wstring const& definition);

// "lines", "frequency", "order" or "mixed".
char const* DomainWord(QVSpecIntervalEntry::domain_t domain);
// The field of a position that a letter stands for, as text.
std::string ValueText(OrderMeaning::Position const& position, wchar_t letter);
// The position as a sum in words: "1 x base order - 2 lines".
std::string SumText(OrderMeaning::Position const& position);

} // namespace paramdb::tools
