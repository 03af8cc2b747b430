// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <memory>
#include <vector>

class QMimeData;
class clsElement;
class SkinCodec;

// Skin elements on the clipboard. An element copied goes there twice: as the
// lines of a skin file, for any text editor (and another running editor),
// and exactly as it is in a private form, which keeps even values that no
// line could hold. What is pasted is read back from the private form when it
// is there, else from the text, read as a skin file is.
class ElementClipboard
{
public:
    static const QString kMimeType;

    // An element copied with its children; a block of Layers (a layer, a
    // state, an element template, an observer) or an object of one.
    // The text form is the element's lines in `codec`, the skin's code page.
    static std::unique_ptr<QMimeData> dataFor(const clsElement &element, bool isBlock, const SkinCodec &codec);

    struct Pasted
    {
        std::vector<std::unique_ptr<clsElement>> blocks;
        std::vector<std::unique_ptr<clsElement>> objects;
        // Entries read that have no place to go (templates, font types,
        // header variables).
        int leftOut = 0;
        // Why nothing could be read, when the data holds no elements.
        QString problem;
    };
    // The elements of the data, each a new element of its own, made by no file.
    // Text is stored in `codec`; text it cannot hold is refused (`problem`).
    static Pasted elementsIn(const QMimeData &data, const SkinCodec &codec);

    // A new element equal to `element`, with copies of its children.
    static std::unique_ptr<clsElement> copyOf(const clsElement &element);
};
