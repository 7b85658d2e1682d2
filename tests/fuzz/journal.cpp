// A journal and a video as a crash, a bad disk or a stranger may have left them: repaired or refused, never more.
//
// The first byte says how to read the rest: as a journal as it is, or as records whose sums are put right, so that what
// they say is looked at.

#include "Fuzz.h"
#include "MemoryFile.h"
#include "base/Checksum.h"
#include "media/JournalReader.h"
#include "media/RecordingClose.h"
#include "media/internal/JournalFormat.h"

#include <algorithm>
#include <vector>

namespace {

using namespace velmo;

using Bytes = std::span<const std::byte>;

/// Each record is told by its type, its length and its content.
std::vector<std::byte> withSums(Bytes bytes) {
    const auto header = internal::journalHeader(RecordingId{1});
    std::vector<std::byte> journal(header.begin(), header.end());
    while (bytes.size() >= 2) {
        const std::size_t length = std::min(std::to_integer<std::size_t>(bytes[1]), bytes.size() - 2);
        const std::size_t begin = journal.size();
        journal.insert(journal.end(), {std::byte{0xA7}, bytes[0], static_cast<std::byte>(length), std::byte{0}});
        journal.insert(journal.end(), bytes.begin() + 2, bytes.begin() + 2 + static_cast<std::ptrdiff_t>(length));
        const std::uint32_t sum = checksum(std::span(journal).subspan(begin));
        for (int shift = 0; shift < 32; shift += 8) {
            journal.push_back(static_cast<std::byte>(sum >> shift & 0xFF));
        }
        bytes = bytes.subspan(2 + length);
    }
    return journal;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const Bytes bytes = std::as_bytes(std::span(data, size)).subspan(1);
    const bool asItIs = data[0] % 2 == 0;
    const std::vector<std::byte> made = asItIs ? std::vector<std::byte>() : withSums(bytes);
    const fuzz::MemoryFile journal(asItIs ? bytes : Bytes(made));
    const std::vector<std::byte> video(4096, std::byte{data[0]});
    const fuzz::MemoryFile file(video);
    JournalReader reader(journal.number());
    const JournalSummary summary = summaryOf(reader);
    if (reader.state() == JournalReader::State::good) {
        for (const Closing closing : {Closing::afterCrash, Closing::afterWriting}) {
            static_cast<void>(closeVideo(file.number(), reader, summary, closing));
        }
    }
    return 0;
}
