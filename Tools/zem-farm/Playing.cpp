#include "Playing.h"

#include "Texts.h"

#include <utility>

namespace ZemFarm
{

std::unique_ptr<Failure> findFailure(const Script& script)
{
    try
    {
        Session session(script._setup);
        for (const Step& step : script._steps)
        {
            session.apply(step);
        }
        session.apply(Step());
        return nullptr;
    }
    catch (const Failure& failure)
    {
        return std::make_unique<Failure>(failure);
    }
}

namespace
{

/// Behind a step, to the end of its line.
std::string makeComment(const std::string& notes)
{
    return notes.empty() ? "\n" : "  #" + notes + '\n';
}

/// Does all steps, and settles in the end; writes them down with comments. Fails: `Failure`, and the step that failed
/// is the last.
void annotateSteps(Session& session, std::vector<Step> steps, std::string& text)
{
    steps.emplace_back();
    for (const Step& step : steps)
    {
        text += print(step);
        try
        {
            session.apply(step);
        }
        catch (const Failure&)
        {
            text += makeComment(session.takeNotes());
            throw;
        }
        text += makeComment(session.takeNotes());
        if (step._kind == StepKind::Settle)
        {
            text += "# " + print(session.getDocument().getTextWithTombstones()) + '\n';
        }
    }
}

} // namespace

std::string annotate(const Script& script)
{
    std::string text = print(script._setup);
    try
    {
        Session session(script._setup);
        session.setTakesNotes(true);
        annotateSteps(session, script._steps, text);
        return text + "# all documents agreed\n";
    }
    catch (const Failure& failure)
    {
        return text + "# " + failure.what() + '\n';
    }
}

} // namespace ZemFarm
