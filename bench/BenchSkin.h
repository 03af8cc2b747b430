#pragma once

#include <QByteArray>

// The large skin the document benchmarks read and save: templates, font
// types, layers of objects with 5 to 15 attributes and scripts, 50 MB long
// (KORVI_BENCH_MB sets another size), made once per process.
namespace BenchSkin {

const QByteArray &largeSkin();

} // namespace BenchSkin
