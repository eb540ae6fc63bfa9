// The user at a dialog or a message box: both run a message loop of their own until they are answered.
#pragma once

#include <functional>
#include <string>
#include <vector>
#include <windows.h>

// What a dialog showed when it was answered.
struct SeenDialog {
    std::string Caption;
    std::string Text;     // of a message box
    HICON Icon = nullptr; // of a message box
    HWND Owner = nullptr;
};

// Answers the dialogs of this thread, one after the other, as planned beforehand. It is a failure when one comes
// that was not planned, or does not come; neither holds the test up.
class DialogAnswers {
public:
    DialogAnswers();
    ~DialogAnswers();
    DialogAnswers(const DialogAnswers&) = delete;
    DialogAnswers& operator=(const DialogAnswers&) = delete;

    // What to do with the next dialog that waits for the user. A dialog that stays open is the next one again.
    DialogAnswers& Then(std::function<void(HWND dialog)> step);

    // Presses a button of it.
    DialogAnswers& ThenPress(int button);

    // Dialogs with that caption come and go by themselves: they are neither answered nor noted.
    DialogAnswers& LeaveAlone(const std::string& caption);

    // The dialogs seen by now.
    const std::vector<SeenDialog>& Seen() const { return Dialogs; }

    // For the one box that was planned: its text.
    std::string OnlyText() const;

    void TakeNextStep(); // for the timer

private:
    std::vector<std::function<void(HWND)>> Steps;
    std::size_t Taken = 0;
    std::vector<SeenDialog> Dialogs;
    std::string LeftAlone;
    int Looks = 0;
    UINT_PTR Timer = 0;
};

// Presses a button of a dialog once the dialog is served again.
void PressButton(HWND dialog, int button);

std::string ControlText(HWND dialog, int control);

// The entries of a list box or the list of a combo box.
std::vector<std::string> ListTexts(HWND dialog, int listBox);
std::vector<std::string> ComboTexts(HWND dialog, int comboBox);
