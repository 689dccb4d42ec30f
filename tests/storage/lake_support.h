// What the tests of the lake share: lakes from texts and back, and the comparison with the model.
#pragma once

#include <paramdb/storage/lake.h>

#include "lake_model.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace lake_support {

/// Reads the text as a file of its own into the lake, which keeps the name of that file.
void ReadText(CLake& lake, std::string_view text);

/// What write() puts into a file, with LF at the line ends on every platform.
std::string WrittenText(CLake const& lake);

/// The same by way of that file, also for a lake with lines that cannot be written; `throws` tells whether
/// std::length_error came.
lake_model::Written WriteLake(CLake const& lake, std::filesystem::path const& path);

/// The node of that index in list order; 0 is the root.
CLake::CNode& Node(CLake& lake, std::size_t index);

/// The index of the position in list order, or lake_model::Nowhere or lake_model::End.
int IndexOf(CLake& lake, CLake::CNode::position position);

/// The values of the unnamed children, in order.
std::vector<std::wstring> Rows(CLake::CNode const& section);

/// The keys of the named children, in order.
std::vector<std::wstring> Keys(CLake::CNode const& section);

/// "key|value|comment" of every node behind the root, in list order.
std::vector<std::wstring> Lines(CLake const& lake);

/// Nothing, or the first difference between the lake and the model in texts, levels, flags and children. With
/// `wide` the texts are asked for as wide strings, which the nodes then keep.
std::string Difference(CLake& lake, lake_model::Lake const& model, bool wide);

/// The bytes as they would stand in a program, so that a failure can be repeated.
std::string Escaped(std::string_view bytes);

} // namespace lake_support
