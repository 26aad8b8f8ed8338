// Test support: arrays of small objects laid out in each description inside a
// canary-filled arena, so a test can hand them to an operation, compare the
// results element by element and prove that nothing else was written.
#pragma once

#include <gtest/gtest.h>
#include <omp.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "kelm.h"

// The 32f or the 64f member of NAME (with suffix SUF) as a function pointer.
#define KT_PICK(T, NAME, SUF)                   \
    [] {                                        \
        if constexpr (std::is_same_v<T, float>) \
            return &NAME##_32f##SUF;            \
        else                                    \
            return &NAME##_64f##SUF;            \
    }()

namespace kt {

// The descriptions an operand can be handed over in.
//   Contig   strided, every element stride equal to the element size
//   Strided  strided, element stride 2 elements, gaps after rows and objects
//   Pointer  one pointer per element (_P), elements scattered, non-zero shift
//   List     one pointer per object (_L), objects in reverse order, unit strides
//   ListS2   as List with element stride 2 elements
enum class Desc { Contig, Strided, Pointer, List, ListS2 };

inline const char* name(Desc d)
{
    switch (d) {
    case Desc::Contig: return "contig";
    case Desc::Strided: return "strided";
    case Desc::Pointer: return "pointer";
    case Desc::List: return "list";
    case Desc::ListS2: return "listS2";
    }
    return "?";
}

constexpr unsigned char kCanary = 0xA5;

// count objects of h rows and w columns (vectors: h = 1) in one description.
template <class T>
class Objects {
public:
    Objects(Desc d, int count, int h, int w, unsigned seed = 1) : desc_(d), count_(count), h_(h), w_(w)
    {
        const int s = int(sizeof(T));
        const bool unit = d == Desc::Contig || d == Desc::List || d == Desc::Pointer;
        elem_ = unit ? s : 2 * s;
        row_ = w * elem_ + (d == Desc::Contig ? 0 : s);
        obj_ = h * row_ + (d == Desc::Contig ? 0 : 3 * s);
        shift_ = (d == Desc::Pointer || d == Desc::List || d == Desc::ListS2) ? 2 * s : 0;
        if (d == Desc::Pointer) obj_ = (h * w + 1) * 2 * s;  // one block of scattered slots per object
        bytes_ = std::size_t(obj_) * count + kPad * 2;
        arena_.assign(bytes_, kCanary);
        used_.assign(bytes_, false);
        if (d == Desc::Pointer) {
            for (int e = 0; e < h * w; ++e)  // element e in slot h*w-1-e: reverse order, gaps between
                table_.push_back(reinterpret_cast<T*>(origin() + (h * w - 1 - e) * 2 * s - shift_));
        }
        if (d == Desc::List || d == Desc::ListS2) {
            for (int k = 0; k < count; ++k)
                table_.push_back(reinterpret_cast<T*>(origin() + std::ptrdiff_t(count - 1 - k) * obj_ - shift_));
        }
        for (int k = 0; k < count; ++k)
            for (int i = 0; i < h; ++i)
                for (int j = 0; j < w; ++j) {
                    unsigned char* p = addr(k, i, j);
                    for (int b = 0; b < s; ++b) used_[std::size_t(p - arena_.data()) + b] = true;
                }
        std::mt19937 rng(seed);
        std::uniform_real_distribution<double> u(-4.0, 4.0);
        for (int k = 0; k < count; ++k)
            for (int i = 0; i < h; ++i)
                for (int j = 0; j < w; ++j) at(k, i, j) = T(u(rng));
    }

    // Strided description: base (object 0), strides in bytes.
    T* base() { return reinterpret_cast<T*>(origin()); }
    int objStride() const { return obj_; }
    int rowStride() const { return row_; }
    int elemStride() const { return elem_; }
    // Pointer and list descriptions: the table and the shift.
    T* const* table() const { return table_.data(); }
    int shift() const { return shift_; }
    Desc desc() const { return desc_; }
    int count() const { return count_; }

    T& at(int k, int i, int j) { return *reinterpret_cast<T*>(addr(k, i, j)); }
    T& at(int k, int j) { return at(k, 0, j); }

    // True when every byte that is not an element still holds the canary.
    bool canaries_intact() const
    {
        for (std::size_t b = 0; b < bytes_; ++b)
            if (!used_[b] && arena_[b] != kCanary) return false;
        return true;
    }
    std::vector<unsigned char> snapshot() const { return arena_; }
    bool unchanged_since(const std::vector<unsigned char>& before) const { return before == arena_; }

private:
    static constexpr std::size_t kPad = 64;
    unsigned char* origin() { return arena_.data() + kPad; }
    unsigned char* addr(int k, int i, int j)
    {
        switch (desc_) {
        case Desc::Pointer: return reinterpret_cast<unsigned char*>(table_[std::size_t(i * w_ + j)]) + shift_ + std::ptrdiff_t(k) * obj_;
        case Desc::List:
        case Desc::ListS2: return reinterpret_cast<unsigned char*>(table_[std::size_t(k)]) + shift_ + i * row_ + j * elem_;
        default: return origin() + std::ptrdiff_t(k) * obj_ + i * row_ + j * elem_;
        }
    }

    Desc desc_;
    int count_, h_, w_;
    int elem_ = 0, row_ = 0, obj_ = 0, shift_ = 0;
    std::size_t bytes_ = 0;
    std::vector<unsigned char> arena_;
    std::vector<bool> used_;
    std::vector<T*> table_;
};

// Bitwise equality, so that NaN payloads and signed zeros count.
template <class T>
bool same_bits(T a, T b)
{
    return std::memcmp(&a, &b, sizeof(T)) == 0;
}

template <class T>
const char* type_name()
{
    return sizeof(T) == 4 ? "32f" : "64f";
}

// Sets the library's thread count for the life of the object.
class Threads {
public:
    explicit Threads(int n) : saved_(threads_omp_of_n_kel) { threads_omp_of_n_kel = n; }
    ~Threads() { threads_omp_of_n_kel = saved_; }
    Threads(const Threads&) = delete;
    Threads& operator=(const Threads&) = delete;

private:
    int saved_;
};

// Runs call on thread 0 of a busy team of two, where a parallel driver
// cannot fork: it then does its first block only and leaves the last object
// unwritten, which shows on which side of its threshold a call fell.  usable
// is false when the runtime would not give the team its two threads.
inline void run_in_busy_team(const std::function<void()>& call, bool& usable)
{
    Threads two(2);
    const int saved = omp_get_max_active_levels();
    omp_set_max_active_levels(1);
    usable = true;
#pragma omp parallel num_threads(2)
    {
        if (omp_get_num_threads() != 2) usable = false;
        if (omp_get_thread_num() == 0 && usable) call();
    }
    omp_set_max_active_levels(saved);
}

// Every description, and how the single-object forms describe what a list
// member of an array points at.
constexpr Desc kAllForms[] = {Desc::Contig, Desc::Strided, Desc::Pointer, Desc::List, Desc::ListS2};
inline bool is_list(Desc d) { return d == Desc::List || d == Desc::ListS2; }
inline Desc single_form(Desc d) { return d == Desc::List ? Desc::Contig : d == Desc::ListS2 ? Desc::Strided : d; }

// A member's parallel threshold seen from outside: at the largest count whose
// work measure is at most the threshold the call stays serial, one object
// more and it goes parallel.  unwritten(count, usable) runs the call where
// the driver cannot fork (run_in_busy_team) and tells whether the last object
// was left unwritten.  Returns false when the runtime gave no two-thread team.
template <class Work, class Unwritten>
bool expect_threshold_edge(const std::string& what, int threshold, Work work, Unwritten unwritten)
{
    int serial = 1;
    while (work(serial + 1) <= threshold) ++serial;
    bool usable1 = true, usable2 = true;
    const bool atMost = unwritten(serial, usable1), above = unwritten(serial + 1, usable2);
    if (!usable1 || !usable2) return false;
    EXPECT_FALSE(atMost) << what << ": count " << serial << " (work " << work(serial) << ")";
    EXPECT_TRUE(above) << what << ": count " << serial + 1 << " (work " << work(serial + 1) << ")";
    return true;
}

// One member's parallel threshold: a name, the threshold, the member's work
// measure for a count, and a call on a count that tells whether the last
// object was left unwritten (usable false when the probe could not run).
struct Probe {
    std::string what;
    int threshold;
    std::function<int(int)> work;
    std::function<bool(int count, bool& usable)> lastUnwritten;
};

// Every probe's edge; skips the test when the runtime gives no two-thread team.
#define KT_EXPECT_THRESHOLD_EDGES(probes)                                                         \
    for (const kt::Probe& p_ : probes)                                                           \
        if (!kt::expect_threshold_edge(p_.what, p_.threshold, p_.work, p_.lastUnwritten))      \
    GTEST_SKIP() << "the runtime gave no two-thread team"

}  // namespace kt
