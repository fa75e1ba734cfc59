#include "HeadlessHost.h"

#include "platform/Failure.h"

namespace Sonmira {

HeadlessHost::Row& HeadlessHost::At(int row) {
    if (row < 1 || row > static_cast<int>(Rows.size())) throw Failure(FailureNumber::SubscriptOutOfRange);
    return Rows[static_cast<std::size_t>(row - 1)];
}

int HeadlessHost::AddRow() {
    Rows.emplace_back();
    return static_cast<int>(Rows.size());
}

void HeadlessHost::SetRowProgress(int row, const QString& text) {
    At(row).Progress = text;
    At(row).ProgressSeen.push_back(text);
}

QString HeadlessHost::RowProgress(int row) const {
    return const_cast<HeadlessHost*>(this)->At(row).Progress;
}

void HeadlessHost::Yield() {
    if (AtYield) AtYield();
}

void HeadlessHost::AddNode(const QString& parentKey, const QString& key, const QString& /*text*/,
                           const QString& imageKey) {
    if (Keys.contains(key)) throw Failure(FailureNumber::KeyNotUnique);
    if (parentKey != RootKey && !Keys.contains(parentKey)) throw Failure(FailureNumber::KeyNotFound);
    Keys.insert(key);
    NodeKeys.push_back(key);
    NodeImages.push_back(imageKey);
}

}  // namespace Sonmira
