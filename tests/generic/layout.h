// Real operands for any member of the table: every object of every operand is
// an s x s block of elements (a vector uses its first row), object k of a
// strided operand at k*block, of a pointer table at its pointers + k*block, of
// a list at list[k] (objects in reverse order).  Every size argument is s, so
// that every size agreement holds; shifts are two elements.  Sources hold
// diagonally dominant symmetric matrices, so that every decomposition,
// inversion and eigenproblem of every object succeeds; gaps hold a canary.
#pragma once

#include <cstring>
#include <memory>
#include <random>
#include <vector>

#include "table.h"

namespace kg {

struct Shape {
    int s = 4;             // every size argument
    int count = 2;         // array length
    bool wide = false;     // element strides of two elements (the general-stride kernels)
    unsigned seed = 1;
};

class Bound {
public:
    Bound(const Op& op, const Shape& sh) : op_(op), sh_(sh)
    {
        const int e = op.esize;
        elem_ = sh.wide ? 2 * e : e;
        block_ = sh.s * sh.s * elem_;
        shift_ = 2 * e;
        const std::size_t n = op.params.size();
        args_.resize(n);
        data_.resize(n);
        tables_.resize(n);
        std::mt19937 rng(sh.seed);
        for (std::size_t i = 0; i < n; ++i) {
            const Param& p = op.params[i];
            switch (p.role) {
            case Role::Base:
            case Role::Table:
            case Role::List: {
                data_[i].assign(std::size_t(sh.count) * block_ + shift_ + 64, 0xA5);
                fill(data_[i], rng, p.role == Role::Base ? 0 : shift_);
                unsigned char* d = data_[i].data();
                if (p.role == Role::Table) {
                    for (int idx = 0; idx < sh.s * sh.s; ++idx) tables_[i].push_back(d + idx * elem_);
                } else if (p.role == Role::List) {
                    for (int k = 0; k < sh.count; ++k) tables_[i].push_back(d + std::ptrdiff_t(sh.count - 1 - k) * block_);
                }
                args_[i].p = p.role == Role::Base ? static_cast<void*>(d) : static_cast<void*>(tables_[i].data());
                break;
            }
            case Role::Buffer:
                data_[i].assign(std::size_t(sh.s) * (3 * sh.s + 5) * e + 64, 0);
                args_[i].p = data_[i].data();
                break;
            case Role::Index: {
                data_[i].assign(std::size_t(sh.count + 1) * sh.s * sizeof(int), 0);
                int* ix = reinterpret_cast<int*>(data_[i].data());
                for (std::size_t k = 0; k < data_[i].size() / sizeof(int); ++k) ix[k] = int(k % std::size_t(sh.s));
                args_[i].p = data_[i].data();
                break;
            }
            case Role::Bytes:
                data_[i].assign(sizeof(int), 0);
                args_[i].p = data_[i].data();
                break;
            case Role::ObjStride: args_[i].i = block_; break;
            case Role::RowStride: args_[i].i = sh.s * elem_; break;
            case Role::ElemStride: args_[i].i = elem_; break;
            case Role::Shift: args_[i].i = shift_; break;
            case Role::Size: args_[i].i = sh.s; break;
            case Role::Count: args_[i].i = sh.count; break;
            case Role::Value: args_[i].d = 1.25; break;
            }
        }
    }

    kelStatus call() const { return op_.call(args_.data()); }

    // Puts every operand back as it was before the first call.
    void reset()
    {
        if (initial_.empty()) {
            initial_ = data_;
            return;
        }
        for (std::size_t i = 0; i < data_.size(); ++i)
            if (!data_[i].empty()) std::memcpy(data_[i].data(), initial_[i].data(), data_[i].size());
    }

    // Everything the call may have written, except the work buffer (which a
    // parallel run leaves alone and a serial run uses).
    std::vector<unsigned char> results() const
    {
        std::vector<unsigned char> all;
        for (std::size_t i = 0; i < data_.size(); ++i)
            if (op_.params[i].role != Role::Buffer) all.insert(all.end(), data_[i].begin(), data_[i].end());
        return all;
    }

private:
    // Matrix (i, j) of each object block: symmetric, diagonally dominant.
    void fill(std::vector<unsigned char>& d, std::mt19937& rng, int offset)
    {
        std::uniform_real_distribution<double> u(-0.5, 0.5);
        const int s = sh_.s;
        std::vector<double> m(std::size_t(s) * s);
        for (int k = 0; k < sh_.count; ++k) {
            for (int i = 0; i < s; ++i)
                for (int j = 0; j <= i; ++j) {
                    double v = i == j ? s + 1.0 + i + u(rng) : u(rng);
                    m[std::size_t(i) * s + j] = m[std::size_t(j) * s + i] = v;
                }
            for (int idx = 0; idx < s * s; ++idx) {
                unsigned char* q = d.data() + std::ptrdiff_t(k) * block_ + idx * elem_ + offset;
                if (op_.esize == 4) {
                    float f = float(m[std::size_t(idx)]);
                    std::memcpy(q, &f, 4);
                } else {
                    std::memcpy(q, &m[std::size_t(idx)], 8);
                }
            }
        }
    }

    const Op& op_;
    Shape sh_;
    int elem_, block_, shift_;
    std::vector<Arg> args_;
    std::vector<std::vector<unsigned char>> data_;
    std::vector<std::vector<unsigned char*>> tables_;
    std::vector<std::vector<unsigned char>> initial_;
};

}  // namespace kg
