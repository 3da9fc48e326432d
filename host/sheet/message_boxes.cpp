#include "host/sheet/message_boxes.h"

#include "host/ppd/wide_text.h"
#include "platform/function_hook.h"
#include "platform/win32.h"

namespace tintwerk {

namespace {

struct Answers
{
    bool confirms = false;
    std::function<void(const std::string&)> tell;
};

Answers answers;

struct Button
{
    int number;
    const char* text;
};

Button AnswerTo(UINT buttons)
{
    if (buttons == MB_OK) return {IDOK, "OK"};
    const bool asksYesOrNo = buttons == MB_YESNO || buttons == MB_YESNOCANCEL;
    if (answers.confirms) return asksYesOrNo ? Button{IDYES, "Yes"} : Button{IDOK, "OK"};
    return buttons == MB_YESNO ? Button{IDNO, "No"} : Button{IDCANCEL, "Cancel"};
}

int WINAPI Answer(HWND, LPCWSTR text, LPCWSTR caption, UINT type)
{
    const Button answer = AnswerTo(type & 0xF);
    answers.tell("message: \"" + Utf8FromWide(caption ? caption : TEXT("")) + "\" \"" +
                 Utf8FromWide(text ? text : TEXT("")) + "\", answered with " + answer.text);
    return answer.number;
}

} // namespace

AnsweredMessageBoxes::AnsweredMessageBoxes(bool confirmsQuestions,
                                           std::function<void(const std::string&)> tell)
{
    answers = {confirmsQuestions, std::move(tell)};
    ReplaceFunction("MessageBoxW", &Answer);
}

AnsweredMessageBoxes::~AnsweredMessageBoxes()
{
    RestoreFunction("MessageBoxW");
    answers = {};
}

} // namespace tintwerk
