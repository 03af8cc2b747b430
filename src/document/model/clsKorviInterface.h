// SPDX-License-Identifier: MIT
#pragma once

#include "SkinCodec.h"
#include "SkinSources.h"
#include "clsElements.h"

// The document root of one skin: header variables, element templates, font
// types, and the layers and other top-level blocks. Several files may be read
// into one document (the edited file and the skin's shared template files).
class clsKorviInterface
{
public:
    clsKorviInterface() = default;
    clsKorviInterface(const clsKorviInterface &) = delete;
    clsKorviInterface &operator=(const clsKorviInterface &) = delete;

    clsElements &Layers() { return mLayers; }
    clsElements &Templates() { return mTemplates; }
    clsElements &Fonts() { return mFonts; }
    clsElements &Headers() { return mHeaders; }
    const clsElements &Layers() const { return mLayers; }
    const clsElements &Templates() const { return mTemplates; }
    const clsElements &Fonts() const { return mFonts; }
    const clsElements &Headers() const { return mHeaders; }

    // The files read into the document, with their bytes as read.
    SkinSources &Sources() { return mSources; }
    const SkinSources &Sources() const { return mSources; }

    // The effective value of a property of an element: its own value, else the
    // first one found through its "template" properties (following each
    // template's own "template"), else through its "fonttype" properties. Empty
    // when nothing is found.
    QByteArray GetElementValue(QByteArrayView name, const clsElement *element) const;

    // The code page the skin's text is in: every value, name and picture name
    // becomes text, and typed text becomes bytes, through it. Clear() keeps
    // it: it belongs to the skin's folder, not to what was read.
    const SkinCodec &codec() const { return mCodec; }
    void setCodec(const SkinCodec &codec) { mCodec = codec; }

    void Clear();
    qsizetype memoryUsed() const;

private:
    QByteArray valueThroughChains(QByteArrayView name, const clsElement *element,
                                  QByteArrayView linkKey, const clsElements &targets) const;

    clsElements mLayers;
    clsElements mTemplates;
    clsElements mFonts;
    clsElements mHeaders;
    SkinSources mSources;
    SkinCodec mCodec;
};
