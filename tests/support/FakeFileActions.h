#pragma once

#include "platform/FileActions.h"

#include <string>
#include <system_error>
#include <vector>

namespace velmo::test {

/// Writes down what it is asked to do. What it throws away goes into the folder `trash`, or nowhere when that is empty.
class FakeFileActions final : public FileActions {
public:
    explicit FakeFileActions(std::filesystem::path trashFolder = {}) : trash(std::move(trashFolder)) {}

    Result<void> moveToTrash(const std::filesystem::path& file) override {
        calls.push_back("trash " + file.filename().native());
        if (trash.empty()) {
            return Error{"test", 5, "no trash"};
        }
        std::error_code failure;
        std::filesystem::rename(file, trash / file.filename(), failure);
        return failure ? Result<void>(Error{"test", failure.value(), failure.message()}) : Result<void>();
    }
    void reveal(const std::filesystem::path& file) override { calls.push_back("reveal " + file.filename().native()); }
    void copyToClipboard(const std::filesystem::path& file) override {
        calls.push_back("copy " + file.filename().native());
    }
    void open(const std::filesystem::path& file) override { calls.push_back("open " + file.filename().native()); }
    void openAddress(const std::string& url) override { calls.push_back("address " + url); }

    std::filesystem::path trash;
    std::vector<std::string> calls;
};

} // namespace velmo::test
