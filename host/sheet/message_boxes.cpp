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

int AnswerTo(UINT type)
{
    switch (type & 0xF) {
    case MB_OK:
        return IDOK;
    case MB_YESNO:
        return answers.confirms ? IDYES : IDNO;
    case MB_YESNOCANCEL:
        return answers.confirms ? IDYES : IDCANCEL;
    default:
        return answers.confirms ? IDOK : IDCANCEL;
    }
}

int WINAPI Answer(HWND, LPCWSTR text, LPCWSTR caption, UINT type)
{
    const int answer = AnswerTo(type);
    if (answers.tell) {
        const char* const said = answer == IDOK    ? "OK"
                                 : answer == IDYES ? "Yes"
                                 : answer == IDNO  ? "No"
                                                   : "Cancel";
        answers.tell("message: \"" + Utf8FromWide(caption ? caption : TEXT("")) + "\" \"" +
                     Utf8FromWide(text ? text : TEXT("")) + "\", answered with " + said);
    }
    return answer;
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
