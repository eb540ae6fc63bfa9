// The font that the view is written in.
#pragma once

#include "view/font_step.h"

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

// Makes the font a step larger or smaller; beeps at the end of the steps, and while another font stands in for it.
void StepScreenFont(FontStep step);

// The settings name another font: it is put to use, in a dump only if it is of fixed pitch.
void UseChosenFont();
