// What holds for every input: a fuzzer that finds it broken ends the program, which counts as a finding.
#pragma once

#include <string>
#include <string_view>

namespace fuzz {

// Tells what was expected, and aborts, if it is not true. `detail` may say more.
void Expect(bool is_true, std::string_view what, std::string_view detail = {});

// The last message of the library, which is told along.
void KeepMessage(std::wstring const& text);

} // namespace fuzz
