// SPDX-License-Identifier: MIT
#pragma once

class Dialogs;
class SettingsFile;
class WebLink;
class clsKorviInterface;
struct SkinContext;

// What the main window is given by whoever starts it: the document it edits,
// the editor-wide values, the way dialogs are asked, where the settings live and
// how web pages open. Tests give scripted dialogs and a temporary settings folder.
struct EditorEnvironment
{
    clsKorviInterface &document;
    SkinContext &context;
    Dialogs &dialogs;
    const SettingsFile &settings;
    WebLink &web;
};
