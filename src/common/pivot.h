// Partial pivoting on a row index, shared by the eliminations that never
// move rows: the rows stay where they are and idx[k] names the k-th pivot row.
#pragma once

#include <cmath>

namespace kelm {

// Among rows idx[k..rows-1], the one with the largest |w[row][k]| (a later
// row wins only when strictly larger, so ties keep the earliest) is exchanged
// into idx[k]; sign changes with every exchange.
template <class T>
inline void choose_pivot(const T* w, int* idx, int k, int rows, int rowLen, T& sign)
{
    int p = k;
    T best = std::fabs(w[idx[k] * rowLen + k]);
    for (int i = k + 1; i < rows; ++i) {
        const T v = std::fabs(w[idx[i] * rowLen + k]);
        if (v > best) best = v, p = i;
    }
    if (p != k) {
        const int t = idx[k];
        idx[k] = idx[p];
        idx[p] = t;
        sign = -sign;
    }
}

}  // namespace kelm
