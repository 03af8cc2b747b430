// SPDX-License-Identifier: MIT
#pragma once

#include "clsProperty.h"

class clsElement;

// What a tree node key names in the document: an element (a template, layer,
// state or child element), and for a property node also the property. Either
// may be missing; a key that names no element names nothing usable.
struct NodeTarget
{
    clsElement *element = nullptr;
    clsProperty property;
    // Every segment of the key was found.
    bool found = false;
};
