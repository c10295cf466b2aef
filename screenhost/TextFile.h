// Whole files of text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace screenhost {

/// Throws TextError with the file's name, also for a file longer than the limit.
std::string ReadTextFile(const std::string& name, std::size_t limit);

/// Makes the folders above a file that do not exist yet. What cannot be made shows when the file is written.
void MakeFolderOf(const std::string& name);

/// Writes a neighbour first and puts it in the file's place, so that a failure leaves the old file. Throws TextError.
void WriteTextFile(const std::string& name, std::string_view text);

}  // namespace screenhost
