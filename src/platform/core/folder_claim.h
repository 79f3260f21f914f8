#pragma once

#include <memory>
#include <vector>

class QFile;
class QString;

namespace platform {

/// Takes a folder for this run of the program, so that a second one can tell. The system gives it
/// free when the program ends, however it ends: what a killed one leaves behind takes nothing.
class FolderClaim
{
public:
    explicit FolderClaim(const QString& folder);
    ~FolderClaim();
    FolderClaim(const FolderClaim&) = delete;
    FolderClaim& operator=(const FolderClaim&) = delete;

    /// Whether another program has the folder. Where no folder can be taken, none has.
    bool isTaken() const { return isTaken_; }

private:
    std::vector<std::unique_ptr<QFile>> marks_;
    bool isTaken_ = false;
};

} // namespace platform
