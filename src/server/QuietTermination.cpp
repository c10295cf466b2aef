// What the library runs when an exception finds no handler. Its own version prints the exception's name to a console
// that a component has not, and brings a name decoder and formatted output with it: nearly 50 KB.
#include <cstdlib>

// NOLINTNEXTLINE(bugprone-reserved-identifier): the library's name for it
namespace __gnu_cxx {

// NOLINTNEXTLINE(bugprone-reserved-identifier): the library's name for it
[[noreturn]] void __verbose_terminate_handler();
void __verbose_terminate_handler() {
    std::abort();
}

}  // namespace __gnu_cxx
