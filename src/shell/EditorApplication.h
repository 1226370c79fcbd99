#pragma once

/// Gives the application of a program that is a host by itself the look, the name and the language of the
/// editor. To be called once, when the application stands.
void prepareEditorApplication();
