// What mutate.py writes into a copy of the sources. Every mutant is there at once; the environment chooses
// one of them: MUTANT=7. Each that is come by is marked in the file that MUTANTS_REACHED names, a byte each.
#pragma once

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <type_traits>
#include <utility>

namespace mutant {

struct Choice {
  int active = 0;
  unsigned char* reached = nullptr;  // shared memory: what a killed process has reached counts too
  long size = 0;
  Choice() {
    if (const char* number = std::getenv("MUTANT")) active = std::atoi(number);
    const char* path = std::getenv("MUTANTS_REACHED");
    const int file = path ? ::open(path, O_RDWR | O_CLOEXEC) : -1;
    struct stat status {};
    if (file < 0 || ::fstat(file, &status) != 0) return;
    void* mapped = ::mmap(nullptr, static_cast<std::size_t>(status.st_size), PROT_READ | PROT_WRITE,
                          MAP_SHARED, file, 0);
    ::close(file);
    if (mapped == MAP_FAILED) return;
    reached = static_cast<unsigned char*>(mapped);
    size = status.st_size;
  }
};

[[gnu::noinline]] inline bool IsNow(int n) {
  static const Choice choice;
  if (choice.reached && n < choice.size) choice.reached[n] = 1;
  return choice.active == n;
}

// In functions that the compiler may run, where mutants sleep, and everywhere else.
template <int N, bool kAsleepInCompiler>
constexpr bool Is() {
  if constexpr (kAsleepInCompiler) {
    if (std::is_constant_evaluated()) return false;
  }
  return IsNow(N);
}

template <int N, bool K, class T>
constexpr T Pick(T right, std::type_identity_t<T> wrong) {
  return Is<N, K>() ? wrong : right;
}

template <int N, bool K, class T>
constexpr const T& First(const T& a, const T& b) {
  return Is<N, K>() ? b : a;
}

// `a < b` becomes `a < Op<7, false>() > b`: the two operators have one precedence.
template <int N, bool K>
struct Op {};
template <int N, bool K, class T>
struct Half {
  T&& side;
};

#define MUTANT_BINARY(open, close, wrong)                                                \
  template <class L, int N, bool K>                                                      \
  constexpr Half<N, K, L> operator open(L&& left, Op<N, K>) {                            \
    return {std::forward<L>(left)};                                                      \
  }                                                                                      \
  template <class L, int N, bool K, class R>                                             \
  requires requires(L && l, R && r) {                                                    \
    l open r;                                                                            \
    static_cast<decltype(l open r)>(l wrong r);                                          \
  }                                                                                      \
  constexpr auto operator close(Half<N, K, L> left, R&& r)->decltype(left.side open r) { \
    if (Is<N, K>()) return static_cast<decltype(left.side open r)>(left.side wrong r);   \
    return left.side open r;                                                             \
  }
MUTANT_BINARY(<, >, <=)
MUTANT_BINARY(<=, >=, <)
MUTANT_BINARY(==, ==, !=)
MUTANT_BINARY(!=, !=, ==)
MUTANT_BINARY(+, +, -)
MUTANT_BINARY(-, -, +)
MUTANT_BINARY(*, *, +)
MUTANT_BINARY(/, /, *)
MUTANT_BINARY(%, %, *)
MUTANT_BINARY(<<, <<, >>)
MUTANT_BINARY(>>, >>, <<)
MUTANT_BINARY(&, &, |)
MUTANT_BINARY(|, |, &)
MUTANT_BINARY(^, ^, |)
#undef MUTANT_BINARY

// The other way round, with an Op of its own, because the openings above close these.
template <int N, bool K>
struct MoreOp {};
template <int N, bool K, class T>
struct MoreHalf {
  T&& side;
};
#define MUTANT_MORE(open, close, wrong)                                                      \
  template <class L, int N, bool K>                                                          \
  constexpr MoreHalf<N, K, L> operator open(L&& left, MoreOp<N, K>) {                        \
    return {std::forward<L>(left)};                                                          \
  }                                                                                          \
  template <class L, int N, bool K, class R>                                                 \
  requires requires(L && l, R && r) {                                                        \
    l open r;                                                                                \
    l wrong r;                                                                               \
  }                                                                                          \
  constexpr auto operator close(MoreHalf<N, K, L> left, R&& r)->decltype(left.side open r) { \
    return Is<N, K>() ? left.side wrong r : left.side open r;                                \
  }
MUTANT_MORE(>, <, >=)
MUTANT_MORE(>=, <=, >)
#undef MUTANT_MORE

// `a += b` becomes `a += Op<7, false>() += b`, which begins on the right.
#define MUTANT_ASSIGNING(right, wrong)                      \
  template <int N, bool K, class R>                         \
  constexpr Half<N, K, R> operator right(Op<N, K>, R&& r) { \
    return {std::forward<R>(r)};                            \
  }                                                         \
  template <class L, int N, bool K, class R>                \
  requires requires(L & l, R && r) {                        \
    l right r;                                              \
    l wrong r;                                              \
  }                                                         \
  constexpr L& operator right(L& l, Half<N, K, R> r) {      \
    if (Is<N, K>())                                         \
      l wrong r.side;                                       \
    else                                                    \
      l right r.side;                                       \
    return l;                                               \
  }
MUTANT_ASSIGNING(+=, -=)
MUTANT_ASSIGNING(-=, +=)
MUTANT_ASSIGNING(*=, +=)
MUTANT_ASSIGNING(/=, *=)
MUTANT_ASSIGNING(|=, &=)
MUTANT_ASSIGNING(&=, |=)
MUTANT_ASSIGNING(<<=, >>=)
MUTANT_ASSIGNING(>>=, <<=)
#undef MUTANT_ASSIGNING

// `!a` becomes `Op<7, false>() ->* a`.
template <int N, bool K, class R>
constexpr bool operator->*(Op<N, K>, R&& r) {
  return Is<N, K>() ? static_cast<bool>(r) : !r;
}

}  // namespace mutant
