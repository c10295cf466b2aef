// What the library calls where one of its functions was used wrongly or asked for too much. Its own versions bring
// texts for people and all of narrow strings, their streams and random numbers with them: nearly 50 KB.
#include <exception>
#include <functional>
#include <new>

namespace {

/// Of the component itself, never of what a container or a user does; a boundary makes it an unexpected failure.
class Misuse final : public std::exception {
public:
    explicit Misuse(const char* text) noexcept : m_text(text) {}
    const char* what() const noexcept override { return m_text; }

private:
    const char* m_text;
};

}  // namespace

// NOLINTBEGIN(bugprone-reserved-identifier, cert-dcl58-cpp): the library's names for them
namespace std {

void __throw_bad_alloc() {
    throw std::bad_alloc();
}
void __throw_bad_array_new_length() {
    throw std::bad_array_new_length();
}
/// More than any memory holds.
void __throw_length_error(const char* /*function*/) {
    throw std::bad_alloc();
}
void __throw_logic_error(const char* text) {
    throw Misuse(text);
}
void __throw_out_of_range(const char* text) {
    throw Misuse(text);
}
void __throw_out_of_range_fmt(const char* text, ...) {
    throw Misuse(text);
}
void __throw_invalid_argument(const char* text) {
    throw Misuse(text);
}

}  // namespace std
// NOLINTEND(bugprone-reserved-identifier, cert-dcl58-cpp)
