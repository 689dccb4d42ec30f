// Has a fuzzing engine change inputs by lines and fields. Linked to fuzzers whose inputs are parameter files,
// each of which tells the tables that matter to it.
#include "custom_mutator.h"

#include "input.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most,
                                               unsigned int seed) {
    if (seed % 4 == 0)
        return LLVMFuzzerMutate(data, size, most);
    std::string const text = fuzz::MutateLake(fuzz::TextOf(data, size), most, seed / 4, fuzz::MutatorTags());
    std::copy(text.begin(), text.end(), data);
    return text.size();
}

extern "C" std::size_t LLVMFuzzerCustomCrossOver(std::uint8_t const* left, std::size_t left_size,
                                                 std::uint8_t const* right, std::size_t right_size,
                                                 std::uint8_t* out, std::size_t most, unsigned int seed) {
    std::string const text =
        fuzz::CrossLakes(fuzz::TextOf(left, left_size), fuzz::TextOf(right, right_size), most, seed);
    std::copy(text.begin(), text.end(), out);
    return text.size();
}
