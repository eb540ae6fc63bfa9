#include "app/app_state.h"

AppState App;
AppSettings AppOptions;
