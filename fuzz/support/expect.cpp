#include "expect.h"

#include <paramdb/platform/core/utf8.h>

#include <cstdlib>
#include <iostream>

namespace fuzz {
namespace {

std::wstring LastMessage;

} // namespace

void Expect(bool is_true, std::string_view what, std::string_view detail) {
    if (is_true)
        return;
    std::cerr << "expected: " << what << '\n';
    if (!detail.empty())
        std::cerr << detail << '\n';
    if (!LastMessage.empty())
        std::cerr << "last message: " << paramdb::ToUtf8(LastMessage);
    std::cerr.flush();
    std::abort();
}

void KeepMessage(std::wstring const& text) {
    LastMessage = text;
}

} // namespace fuzz
