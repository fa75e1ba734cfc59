#pragma once

#include "library/Collection.h"

#include <functional>

namespace Sonmira {

struct BatchConverterForm;

// What adding shows, on the main window.
class BatchCollectionView final : public CollectionView {
public:
    // `lockInputs` is what SetControlsEnabled does.
    BatchCollectionView(BatchConverterForm& form, std::function<void(bool enabled)> lockInputs)
        : Form(form), LockInputs(std::move(lockInputs)) {}

    void GetIcon(const QString& path) override;
    void GetIcon4(const QString& path) override;
    void AddNode(const QString& parentKey, const QString& key, const QString& text,
                 const QString& imageKey) override;
    void ShowPath(const QString& path) override;
    void ShowDirectoryCount(int count) override;
    void ShowFileCount(int count) override;
    void SetControlsEnabled(bool enabled) override;
    void Yield() override;

private:
    BatchConverterForm& Form;
    std::function<void(bool)> LockInputs;
};

}  // namespace Sonmira
