#include "shell/ForcedEnd.h"

#include "platform/Failure.h"
#include "platform/Processes.h"

#include <array>

namespace Sonmira {

namespace {

// Two lists side by side, numbered from 1; the walk is done before the first name is looked at, so a
// machine with more processes fails whatever their names are.
class ProcessLists {
public:
    static constexpr int Room = 100;

    void Append(const RunningProcess& process) {
        if (Count == Room) throw Failure(FailureNumber::SubscriptOutOfRange);
        ++Count;
        Names[static_cast<std::size_t>(Count)] = process.Name;
        Ids[static_cast<std::size_t>(Count)] = process.Id;
    }

    // The id of the first process whose upper-cased name contains `upperName`; 0 for none.
    qint64 FirstNamed(const QString& upperName) const {
        for (int n = 1; n <= Count; ++n) {
            if (Names[static_cast<std::size_t>(n)].toUpper().contains(upperName)) {
                return Ids[static_cast<std::size_t>(n)];
            }
        }
        return 0;
    }

private:
    std::array<QString, Room + 1> Names;
    std::array<qint64, Room + 1> Ids{};
    int Count = 0;
};

}  // namespace

QString KillProcessByName(const QString& name) {
    ProcessLists lists;
    for (const RunningProcess& process : Processes().List()) lists.Append(process);
    KillProcessById(lists.FirstNamed(name.toUpper()));
    return {};
}

bool KillProcessById(qint64 processId) {
    if (processId == 0) return false;
    bool ended = false;
    PassOver([&] { ended = Processes().End(processId); });
    return ended;
}

}  // namespace Sonmira
