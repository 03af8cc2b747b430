// SPDX-License-Identifier: MIT
// The run of siblings that stay in place when some moved: increasing in
// reading order, the heaviest of all such runs.
#include "InOrderRun.h"

#include <QRandomGenerator>
#include <QtTest>

#include <algorithm>
#include <numeric>
#include <random>

namespace {

qint64 weightOf(const std::vector<bool> &in, const std::vector<qint64> &weights)
{
    qint64 sum = 0;
    for (size_t k = 0; k < in.size(); ++k)
        sum += in[k] ? weights[k] : 0;
    return sum;
}

bool increasing(const std::vector<bool> &in, const std::vector<quint32> &records)
{
    bool any = false;
    quint32 last = 0;
    for (size_t k = 0; k < in.size(); ++k) {
        if (!in[k])
            continue;
        if (any && records[k] <= last)
            return false;
        any = true;
        last = records[k];
    }
    return true;
}

// Every subset tried: the weight of the heaviest increasing one.
qint64 heaviestByTrying(const std::vector<quint32> &records, const std::vector<qint64> &weights)
{
    qint64 best = 0;
    for (quint32 mask = 0; mask < (1u << records.size()); ++mask) {
        std::vector<bool> in(records.size());
        for (size_t k = 0; k < records.size(); ++k)
            in[k] = (mask >> k) & 1u;
        if (increasing(in, records))
            best = std::max(best, weightOf(in, weights));
    }
    return best;
}

} // namespace

class TestInOrderRun : public QObject
{
    Q_OBJECT

private slots:
    void siblingsInTheirOrderAllStay()
    {
        QCOMPARE(InOrderRun::heaviest({ 1, 4, 9 }, { 1, 1, 1 }), std::vector<bool>({ true, true, true }));
        QCOMPARE(InOrderRun::heaviest({}, {}), std::vector<bool>());
    }

    void oneMovedToTheFrontIsTheOneThatGoes()
    {
        QCOMPARE(InOrderRun::heaviest({ 7, 2, 3, 5 }, { 1, 1, 1, 1 }), std::vector<bool>({ false, true, true, true }));
    }

    void ofTwoSwappedTheHeavierStays()
    {
        QCOMPARE(InOrderRun::heaviest({ 1, 0 }, { 3, 4 }), std::vector<bool>({ false, true }));
        QCOMPARE(InOrderRun::heaviest({ 1, 0 }, { 4, 3 }), std::vector<bool>({ true, false }));
    }

    void theRunIsIncreasingAndAsHeavyAsAnyOther()
    {
        QRandomGenerator random(20261124);
        for (int round = 0; round < 500; ++round) {
            const int n = random.bounded(1, 9);
            std::vector<quint32> records(static_cast<size_t>(n));
            std::iota(records.begin(), records.end(), quint32(random.bounded(0, 5)));
            std::shuffle(records.begin(), records.end(), std::mt19937(random.generate()));
            std::vector<qint64> weights(static_cast<size_t>(n));
            for (qint64 &w : weights)
                w = 10 + random.bounded(0, 2);
            const std::vector<bool> in = InOrderRun::heaviest(records, weights);
            QVERIFY(increasing(in, records));
            QCOMPARE(weightOf(in, weights), heaviestByTrying(records, weights));
        }
    }
};

QTEST_APPLESS_MAIN(TestInOrderRun)
#include "tst_inorderrun.moc"
