// What the tests of the tables share: sources from texts, and what tables show.
#pragma once

#include <paramdb/storage/lake.h>
#include <paramdb/tables/table_interface.h>

#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <tests/support/messages.h>
#include <tests/support/temp_dir.h>

namespace table_support {

/// Reads the text into the lake, as a file.
inline void ReadText(CLake& lake, std::string_view text) {
    test_support::TempDir const folder;
    auto const path = folder / u8"tables.lake";
    test_support::WriteBytes(path, text);
    EXPECT_TRUE(lake.read(CString(test_support::WideName(path))));
}

/// A lake that was read from a file with that text.
struct LakeOf {
    explicit LakeOf(std::string_view text) { ReadText(lake, text); }
    CLake lake;
};

/// The text of all lines that were output; each must be a plain line of the protocol.
inline std::wstring ProtocolText(MessageLog& messages) {
    std::wstring text;
    for (Message const& message : messages.Take()) {
        EXPECT_EQ(message.category, 8);
        EXPECT_EQ(message.style, 1);
        EXPECT_EQ(message.text.find(L'\n'), message.text.size() - 1);
        text += message.text;
    }
    return text;
}

/// The dump of a table.
inline std::wstring Dump(CQParamBaseTableInterface& table, int limit = 0) {
    MessageLog messages;
    table.DumpTable(limit);
    return ProtocolText(messages);
}

/// The message for a line that could not be read.
inline Message LineError(std::wstring const& tag, std::wstring const& line) {
    return {8, 3,
            L"CQParamSeaTypedTable< T >::ReadTable(): Error reading line '" + line + L"' of table '" + tag +
                L"'\n"};
}

/// The message for a text that is no number: "invalid stoi argument" and the like.
inline Message ConversionError(std::wstring const& reason, std::wstring const& rest) {
    return {8, 3,
            L"Error converting parameter sea to parameter tables: '" + reason + L"' for substring '" + rest +
                L"'\n"};
}

/// The message for a cell of another type than its field, that many cells from the end.
inline Message CellError(std::wstring const& tag, std::size_t left) {
    return {
        8, 3,
        L"CQParamSeaTypedTable< T >::ReadTable(): No data or incompatible data type in some field of line " +
            std::to_wstring(left) + L"' of table '" + tag + L"'\n"};
}

} // namespace table_support
