// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

// The large skin the document benchmarks read and save: templates, font
// types, layers of objects with 5 to 15 attributes and scripts, 50 MB long
// (KORVI_BENCH_MB sets another size), made once per process.
namespace BenchSkin {

// A realistic skin of that kind, about `targetBytes` long, the same at every run.
QByteArray generate(qsizetype targetBytes);

const QByteArray &largeSkin();

} // namespace BenchSkin
