// Order definitions: the library gives what the model of the tests gives, for any text and any room.
#include <paramdb/distillery/order_interpreter.h>
#include <paramdb/distillery/spec_interval_store.h>

#include "support/expect.h"
#include "support/input.h"
#include "support/message_watch.h"

#include <algorithm>
#include <tests/distillery/order_model.h>

namespace {

// Byte by byte, but what follows a backslash is a character with that byte twice, beyond those of one byte.
std::wstring Wide(std::string_view bytes) {
    std::wstring text;
    for (std::size_t place = 0; place < bytes.size(); ++place) {
        bool const is_far = bytes[place] == '\\' && place + 1 < bytes.size();
        auto const byte = static_cast<unsigned char>(bytes[is_far ? ++place : place]);
        text += static_cast<wchar_t>(is_far ? byte * 257 : byte);
    }
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    if (size == 0)
        return 0;
    // The first byte is the room: mostly the usual one.
    unsigned int const room = data[0] < 64 ? data[0] : CQtSpecIntervalStore::max_orders;
    std::wstring const text(Wide(fuzz::TextOf(data + 1, size - 1)).c_str());

    fuzz::MessageWatch messages;
    std::vector<QVSpecIntervalEntry::Definition> positions(room);
    unsigned int const count = OrderInterpreter::GetSpecPositions(text.c_str(), positions.data(), room);
    std::size_t const reports = messages.TakeCount();
    // White space ahead of a number: the model knows that of ASCII alone.
    std::wstring simple = text;
    std::replace(simple.begin(), simple.end(), L'\x85', L'\t');
    std::replace(simple.begin(), simple.end(), L'\xA0', L'\t');
    auto const expected = ModelOfOrders(simple, room);
    fuzz::Expect(count <= room, "no more positions than room");
    fuzz::Expect(reports == (expected.is_bad ? 1u : 0u), "one message for a bad text, none for a good one");
    fuzz::Expect(count == expected.positions.size(), "as many positions as the model has");
    for (unsigned int position = 0; position < count; ++position)
        fuzz::Expect(OrderPosition(positions[position]) == expected.positions[position],
                     "the positions of the model");

    std::vector<QVSpecIntervalEntry> pairs(room);
    unsigned int const pair_count = CQtSpecIntervalStore::Range(text.c_str(), pairs.data(), room);
    auto const usual = std::min(room, CQtSpecIntervalStore::max_orders);
    fuzz::Expect(pair_count == ModelOfOrders(simple, usual).positions.size() / 2,
                 "as many pairs as the model");
    return 0;
}
