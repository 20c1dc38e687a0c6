#include "Platform/Linux/Tray/MenuEdits.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace Tavrin {
namespace {

QHash<QString, int> positions(const QStringList& identities)
{
    QHash<QString, int> result;
    for (int index = 0; index < identities.size(); ++index)
        result.insert(identities[index], index);
    return result;
}

/// The largest set of entries that stand in the same order in both lists: the longest ascending
/// subsequence of the present positions, taken in wanted order (patience sorting).
QSet<QString> entriesThatStay(const QHash<QString, int>& present, const QStringList& wanted)
{
    std::vector<int> endPositions;
    std::vector<int> endIndices;
    std::vector<int> predecessors(std::size_t(wanted.size()), -1);
    for (int index = 0; index < wanted.size(); ++index) {
        const auto found = present.find(wanted[index]);
        if (found == present.end())
            continue;
        const auto pile = std::lower_bound(endPositions.begin(), endPositions.end(), *found);
        const auto depth = std::size_t(pile - endPositions.begin());
        if (depth > 0)
            predecessors[std::size_t(index)] = endIndices[depth - 1];
        if (pile == endPositions.end()) {
            endPositions.push_back(*found);
            endIndices.push_back(index);
        } else {
            *pile = *found;
            endIndices[depth] = index;
        }
    }
    QSet<QString> result;
    for (int index = endIndices.empty() ? -1 : endIndices.back(); index >= 0;
         index = predecessors[std::size_t(index)])
        result.insert(wanted[index]);
    return result;
}

} // namespace

std::vector<MenuEdit> menuEdits(const QStringList& present, const QStringList& wanted)
{
    const QHash<QString, int> presentPositions = positions(present);
    const QHash<QString, int> wantedPositions = positions(wanted);
    const QSet<QString> staying = entriesThatStay(presentPositions, wanted);

    std::vector<MenuEdit> edits;
    for (const QString& identity : present) {
        if (!wantedPositions.contains(identity))
            edits.push_back({MenuEdit::Kind::remove, identity, {}});
    }
    // From the end, so that the entry to stand before is already in its place.
    for (qsizetype index = wanted.size(); index-- > 0;) {
        if (staying.contains(wanted[index]))
            continue;
        const bool isPresent = presentPositions.contains(wanted[index]);
        edits.push_back({isPresent ? MenuEdit::Kind::move : MenuEdit::Kind::insert, wanted[index],
            index + 1 < wanted.size() ? wanted[index + 1] : QString()});
    }
    return edits;
}

} // namespace Tavrin
