// What a rename that was cut short left behind: no name in it may lead out of the folder.

#include "Fuzz.h"
#include "library/internal/RenameIntent.h"
#include "support/TemporaryFolder.h"

using namespace velmo;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TemporaryFolder folder;
    folder.write(".velmo-renombrar", {reinterpret_cast<const char*>(data), size});
    if (const auto intent = internal::RenameIntentFile(folder).load()) {
        for (const std::string& name : {intent->from, intent->to}) {
            fuzz::require((folder / name).lexically_normal().parent_path() == folder.path());
        }
    }
    return 0;
}
