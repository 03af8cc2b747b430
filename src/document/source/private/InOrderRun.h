// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>
#include <vector>

// Which siblings stay where they are when some moved: a run of them whose
// records (numbered in reading order, all different) still increase. Of all
// such runs the heaviest is taken; weigh each entry the same and it is the
// longest.
namespace InOrderRun {

// One flag per entry: whether it belongs to the heaviest increasing run.
// Weights are positive.
std::vector<bool> heaviest(const std::vector<quint32> &records, const std::vector<qint64> &weights);

} // namespace InOrderRun
