#include "PlainText.h"
#include "Trace.h"

#include "Editing/CS_Characters.h"

#include <algorithm>

namespace ZemReplay
{

namespace
{

void requireUtf8(const Trace& trace, std::string_view text, const std::string& place)
{
    if (Zem::CollaborationSession::findInvalidUtf8(text) < text.size())
    {
        throw BadTrace(trace._name + ": " + place + ": the text isn't UTF-8");
    }
}

/// Requires that every patch of [begin, end), one behind the other, lies inside the text that it finds.
void checkPatches(const Trace& trace, unsigned long begin, unsigned long end)
{
    unsigned long length = countCharacters(trace._startContent);
    for (unsigned long index = begin; index < end; ++index)
    {
        const Patch& patch = trace._patches[index];
        if (patch._position > length || patch._deleteCount > length - patch._position)
        {
            throw BadTrace(trace._name + ": " + getName(trace, patch) + ": [" + std::to_string(patch._position) + ", " +
                           std::to_string(patch._deleteCount) + ", ...] lies outside of the text, which has " +
                           std::to_string(length) + " characters there");
        }
        length += countCharacters(trace.getText(patch)) - patch._deleteCount;
    }
}

void checkStreams(const Trace& trace)
{
    const auto begin = trace._transactions.begin();
    const auto isOfOther = [&](const Transaction& transaction) { return transaction._agent != begin->_agent; };
    const auto other = std::find_if(begin, trace._transactions.end(), isOfOther);
    checkPatches(trace, 0, static_cast<unsigned long>(other - begin));
    checkPatches(trace, static_cast<unsigned long>(other - begin), trace._patches.size());
}

} // namespace

std::string getName(const Trace& trace, const Patch& patch)
{
    const std::string number = "[" + std::to_string(patch._number) + "]";
    if (trace._kind == TraceKind::Spread || trace._kind == TraceKind::Hot)
    {
        return (trace._transactions[patch._transaction]._agent == 0 ? "a" : "b") + number;
    }
    return "txns[" + std::to_string(patch._transaction) + "].patches" + number;
}

std::vector<KnownCounts> countKnown(const Trace& trace)
{
    const auto fail = [&](unsigned long number, const std::string& what)
    { throw BadTrace(trace._name + ": txns[" + std::to_string(number) + "] " + what); };
    if (trace._agentsCount > maximalAgentsCount)
    {
        throw BadTrace(trace._name + ": numAgents is " + std::to_string(trace._agentsCount) + "; no more than " +
                       std::to_string(maximalAgentsCount) + " users can be played");
    }
    std::vector<KnownCounts> known(trace._transactions.size());
    KnownCounts made{};
    for (unsigned long number = 0; number < known.size(); ++number)
    {
        const Transaction& transaction = trace._transactions[number];
        if (transaction._agent >= trace._agentsCount)
        {
            fail(number, "is by agent " + std::to_string(transaction._agent) + ", which there isn't");
        }
        for (const unsigned long parent : transaction._parents)
        {
            for (unsigned long agent = 0; agent < maximalAgentsCount; ++agent)
            {
                known[number][agent] = std::max(known[number][agent], known[parent][agent]);
            }
        }
        if (known[number][transaction._agent] != made[transaction._agent])
        {
            fail(number, "doesn't know all that its agent made before");
        }
        known[number][transaction._agent] = ++made[transaction._agent];
    }
    return known;
}

void checkTrace(const Trace& trace)
{
    requireUtf8(trace, trace._startContent, "startContent");
    for (const Patch& patch : trace._patches)
    {
        requireUtf8(trace, trace.getText(patch), getName(trace, patch));
    }
    switch (trace._kind)
    {
    case TraceKind::Sequential:
        checkPatches(trace, 0, trace._patches.size());
        break;
    case TraceKind::Concurrent:
        countKnown(trace);
        break;
    case TraceKind::Spread:
    case TraceKind::Hot:
        checkStreams(trace);
        break;
    }
}

} // namespace ZemReplay
