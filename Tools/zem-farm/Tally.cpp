#include "Tally.h"

#include "Generators.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace ZemFarm
{

namespace
{

void add(Tally::Counts& counts, const Tally::Counts& others)
{
    for (const auto& [name, count] : others)
    {
        counts[name] += count;
    }
}

void add(RefusalCounts& counts, const RefusalCounts& others)
{
    for (const auto& [reason, refused] : others)
    {
        RefusedActions& sum = counts[reason];
        if (sum._count == 0)
        {
            sum._sentence = refused._sentence;
        }
        sum._count += refused._count;
    }
}

/// Lines of a name and a number each.
class Table
{
public:
    void add(const std::string& name, unsigned long count)
    {
        _rows.emplace_back(name, std::to_string(count));
    }

    /// With the sum in front.
    void addAll(const std::string& name, const RefusalCounts& counts)
    {
        add(name, getTotal(counts));
        for (const auto& [reason, refused] : counts)
        {
            add(std::string("  ") + describe(reason), refused._count);
        }
    }

    std::string format() const
    {
        // Wide enough for every speed, so that equal counts make equal tables however long they took.
        constexpr std::size_t minCountWidth = 9;
        std::size_t nameWidth = 0;
        std::size_t countWidth = minCountWidth;
        for (const auto& [name, count] : _rows)
        {
            nameWidth = std::max(nameWidth, name.size());
            countWidth = std::max(countWidth, count.size());
        }
        std::string text;
        for (const auto& [name, count] : _rows)
        {
            text += name + std::string(nameWidth - name.size() + 2 + countWidth - count.size(), ' ') + count + '\n';
        }
        return text;
    }

private:
    std::vector<std::pair<std::string, std::string>> _rows;
};

} // namespace

void Tally::add(const Tally& other)
{
    _sessionsCount += other._sessionsCount;
    _joinsCount += other._joinsCount;
    _lateJoinsCount += other._lateJoinsCount;
    _leavesCount += other._leavesCount;
    _reconnectsCount += other._reconnectsCount;
    _roundsCount += other._roundsCount;
    _judgedCount += other._judgedCount;
    _selectionsCount += other._selectionsCount;
    _operationsCount += other._operationsCount;
    ZemFarm::add(_operationsByGenerator, other._operationsByGenerator);
    _declinedCount += other._declinedCount;
    _transformedCount += other._transformedCount;
    _changedCount += other._changedCount;
    _shadowedCount += other._shadowedCount;
    _badCount += other._badCount;
    _hostileBatchesCount += other._hostileBatchesCount;
    _turnedAwayCount += other._turnedAwayCount;
    _hostileActionsCount += other._hostileActionsCount;
    _hostileRefusedCount += other._hostileRefusedCount;
    ZemFarm::add(_rejected, other._rejected);
    ZemFarm::add(_refused, other._refused);
    _remadeAtServerCount += other._remadeAtServerCount;
    _remadeByClientsCount += other._remadeByClientsCount;
    _replayedCount += other._replayedCount;
    _rebasedCount += other._rebasedCount;
    _executedCount += other._executedCount;
    _besidePendingCount += other._besidePendingCount;
}

const char* describe(RefusalReason reason)
{
    switch (reason)
    {
    case RefusalReason::FitsNoDocument:
        return "fits no document";
    case RefusalReason::HasNoPlace:
        return "has no place";
    case RefusalReason::NotTaken:
        return "not taken";
    case RefusalReason::TargetRemoved:
        return "target removed";
    case RefusalReason::NotWhole:
        return "not whole";
    case RefusalReason::NothingToBringBack:
        return "nothing to bring back";
    }
    throw std::logic_error("a reason without a description");
}

void count(const Refusal& refusal, RefusalCounts& counts)
{
    RefusedActions& refused = counts[refusal._reason];
    if (refused._count == 0)
    {
        refused._sentence = refusal._sentence;
    }
    ++refused._count;
}

unsigned long getTotal(const RefusalCounts& counts)
{
    unsigned long total = 0;
    for (const auto& [reason, refused] : counts)
    {
        total += refused._count;
    }
    return total;
}

std::string format(const Tally& tally, double seconds)
{
    Table table;
    table.add("sessions", tally._sessionsCount);
    table.add("clients", tally._joinsCount);
    table.add("  joined late", tally._lateJoinsCount);
    table.add("  left early", tally._leavesCount);
    table.add("reconnects", tally._reconnectsCount);
    table.add("rounds", tally._roundsCount);
    table.add("  judged", tally._judgedCount);
    table.add("selections", tally._selectionsCount);
    table.add("operations", tally._operationsCount);
    for (const Generator& generator : getGenerators())
    {
        const auto found = tally._operationsByGenerator.find(generator._name);
        table.add(std::string("  ") + generator._name, found == tally._operationsByGenerator.end() ? 0 : found->second);
    }
    table.add("edits that a text didn't take", tally._declinedCount);
    table.add("transformed at the server", tally._transformedCount);
    table.add("changed at the server", tally._changedCount);
    table.add("shadowed at the server", tally._shadowedCount);
    table.addAll("refused at the server", tally._rejected);
    table.add("bad on purpose, and rejected", tally._badCount);
    table.add("batches of strangers", tally._hostileBatchesCount);
    table.add("  turned away at the door", tally._turnedAwayCount);
    table.add("  actions that were let in", tally._hostileActionsCount);
    table.add("    refused", tally._hostileRefusedCount);
    table.addAll("refused, as authors learnt", tally._refused);
    table.add("made again at the server", tally._remadeAtServerCount);
    table.add("made again by clients", tally._remadeByClientsCount);
    table.add("replayed to make documents again", tally._replayedCount);
    table.add("rebased by clients", tally._rebasedCount);
    table.add("executed by clients for others", tally._executedCount);
    table.add("  beside what is pending", tally._besidePendingCount);
    const auto count = static_cast<double>(tally._operationsCount);
    table.add("operations per second", seconds > 0 ? static_cast<unsigned long>(count / seconds) : 0);
    return table.format();
}

} // namespace ZemFarm
