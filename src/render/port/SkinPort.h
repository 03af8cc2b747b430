// SPDX-License-Identifier: MIT
#pragma once

#include "PortNumbers.h"
#include "PortReport.h"
#include "SkinCodec.h"

#include <QString>
#include <functional>

// Makes a skin's folders for another screen format beside the old ones:
// SKIN/<to>/ from SKIN/<from>/ and SKIN/common/vga/<to>/ from
// SKIN/common/vga/<from>/, with file names and format values renamed, the
// numbers of every .ui file scaled (PortNumbers, saved losslessly through Save
// Changes) and every picture resized (PicturePort, on every core). Everything
// is written into temporary folders beside the targets, which are renamed
// into place at the end: a failure leaves no target half-written. Nothing
// outside the target folders is written.
class SkinPort
{
public:
    struct Options
    {
        QString skinDir;
        QString from;
        QString to;
        enum class Aspect { Stretch, Fit };
        Aspect aspect = Aspect::Stretch;
        PortScale::Fonts fonts = PortScale::Fonts::Scale;
        QString fontMapFile;
        bool dryRun = false;
        // Replace target folders that exist.
        bool force = false;
        // Threads for the pictures; 0: as many as the machine has cores.
        int threads = 0;
        // The code page of the skin's text: picture names are looked up and
        // values quoted in the report as it reads them.
        SkinCodec codec = SkinCodec::hostDefault();
    };
    struct Result
    {
        bool ok = false;
        QString error;
        PortReport report;
    };
    // Told on the calling thread as the work goes: steps done of how many.
    using Progress = std::function<void(int done, int total)>;

    explicit SkinPort(const Options &options);
    Result run(const Progress &progress = {});

private:
    Options mOptions;
};
