#pragma once

#include <QByteArray>

// The large skin the benchmarks read and check, the same at every run.
namespace GeneratedSkin {

// A realistic skin: templates, font types, layers of objects with 5 to 15
// attributes, scripts, about `targetBytes` long.
QByteArray generate(qsizetype targetBytes);

} // namespace GeneratedSkin
