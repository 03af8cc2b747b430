// SPDX-License-Identifier: MIT
#include "InOrderRun.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace InOrderRun {

// For each entry in turn, the heaviest run ending with it is its weight and
// the heaviest run ending at a smaller record; a Fenwick tree over the
// records' ranks gives that in logarithmic time.
std::vector<bool> heaviest(const std::vector<quint32> &records, const std::vector<qint64> &weights)
{
    const size_t n = records.size();
    std::vector<size_t> byRecord(n);
    std::iota(byRecord.begin(), byRecord.end(), size_t(0));
    std::sort(byRecord.begin(), byRecord.end(), [&](size_t a, size_t b) { return records[a] < records[b]; });
    std::vector<size_t> rank(n);
    for (size_t r = 0; r < n; ++r)
        rank[byRecord[r]] = r + 1;

    using Best = std::pair<qint64, ptrdiff_t>; // weight of the run, its last entry
    std::vector<Best> tree(n + 1, Best(0, -1));
    const auto bestBelow = [&](size_t r) {
        Best best(0, -1);
        for (; r > 0; r -= r & (~r + 1))
            best = std::max(best, tree[r]);
        return best;
    };
    const auto offer = [&](size_t r, Best run) {
        for (; r <= n; r += r & (~r + 1))
            tree[r] = std::max(tree[r], run);
    };
    std::vector<ptrdiff_t> before(n, -1);
    Best best(0, -1);
    for (size_t k = 0; k < n; ++k) {
        const Best below = bestBelow(rank[k] - 1);
        before[k] = below.second;
        const Best run(below.first + weights[k], ptrdiff_t(k));
        offer(rank[k], run);
        best = std::max(best, run);
    }
    std::vector<bool> in(n, false);
    for (ptrdiff_t k = best.second; k >= 0; k = before[size_t(k)])
        in[size_t(k)] = true;
    return in;
}

} // namespace InOrderRun
