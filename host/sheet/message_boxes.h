// Answers the message boxes of the plug-in in place of the user, and tells what they said: for scripts and
// for job events, which must never wait for somebody who is not there.
#pragma once

#include <functional>
#include <string>

namespace tintwerk {

// Works while it lives; one at a time in a process.
class AnsweredMessageBoxes
{
public:
    // Boxes with a choice are confirmed or cancelled; those without one are closed.
    AnsweredMessageBoxes(bool confirmsQuestions, std::function<void(const std::string&)> tell);
    ~AnsweredMessageBoxes();
    AnsweredMessageBoxes(const AnsweredMessageBoxes&) = delete;
    AnsweredMessageBoxes& operator=(const AnsweredMessageBoxes&) = delete;
};

} // namespace tintwerk
