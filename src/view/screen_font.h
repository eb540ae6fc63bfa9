// The font that the view is written in.
#pragma once

// Builds the view font from the settings, or takes the stock fixed-pitch font, measures it and, once
// there is a view, lays the frame out anew and repaints.
void CreateScreenFont(bool useStock);

// Measures the current font into the view state.
void FontMetrics();

// Deletes the font unless it is the stock one.
void DeleteScreenFont();

// For a dump or a non-text file: puts the stock font in place of a proportional one.
void SubstituteScreenFont();

// Back to the chosen font.
void RestoreScreenFont();
