// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>

// The print dialog was cancelled while the dialog was told to report a cancel as
// an error (which this program never asks for: a cancel returns quietly).
class PrintCancelledError : public std::runtime_error
{
public:
    static constexpr int Number = 32755;
    PrintCancelledError() : std::runtime_error("Cancel.") { }
    int number() const { return Number; }
    const char *source() const { return "QV PrintDialog"; }
};
