// Failures of components in words.
#pragma once

#include <windows.h>

#include <string>
#include <utility>

#include "comkit/Errors.h"
#include "screenhost/TextCursor.h"

namespace screenhost {

/// The component's own text and source where it left any, otherwise the system's; always with the number.
std::string ErrorText(const comkit::ComError& error);
std::string ErrorText(HRESULT hr);

/// Runs body; a component's failure becomes a TextError that starts with what was being done.
template <class Body>
auto Telling(const std::string& what, Body&& body) {
    try {
        return body();
    } catch (const comkit::ComError& error) {
        throw TextError(what + ": " + ErrorText(error));
    }
}

}  // namespace screenhost
