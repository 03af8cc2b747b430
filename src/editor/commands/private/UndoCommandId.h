// SPDX-License-Identifier: MIT
#pragma once

// The ids by which the undo stack merges a command into the one before it
// (QUndoCommand::id()); commands that never merge keep the default -1.
enum class UndoCommandId : int {
    SetPropertyValue = 1,
    MoveElement,
};
