// What the library knows of the exceptions of each thread; kept in the module, so that the first exception of a thread
// needs no memory.
#pragma once

namespace kiv::server {

/// The calling thread ends: its place is free for another one.
void ForgetExceptionsOfThread() noexcept;

}  // namespace kiv::server
