// Keys and mouse go to the program through the display's server and the system's, and once in some thousand tests one
// of them is lost on the way.
#pragma once

// Runs all tests. With KESTOVAR_SECOND_TRY in the environment a few that failed are run once more, in a new process of
// this program: it prints "[ AGAIN    ]" first, and what it prints then and its result are those that count. Called
// when RUN_ALL_TESTS would be; cleanUp is called behind the first run.
int RunAllTestsWithSecondTry(void (*cleanUp)());
