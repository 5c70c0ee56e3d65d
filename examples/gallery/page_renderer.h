#pragma once

#include <QtCore/QString>

class GalleryWindow;

// Shows every page in turn and writes a picture of the window to "<folder>/<id>.png".
// Returns the number of pictures that could not be written.
int RenderAllPages(GalleryWindow& window, const QString& folder);
