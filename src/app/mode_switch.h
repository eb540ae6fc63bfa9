// Text or hex.
#pragma once

// Shows the open file in the other mode, from the place that was at the top when going to hex, from its
// beginning when going to text. Only refreshes the status line when the mode is the current one.
void SwitchMode(bool hexMode);
