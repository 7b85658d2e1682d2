#pragma once

#include "media/RecordingJournal.h"

#include <span>

namespace velmo::internal {

// Numbers are little-endian.
//
//   header   8 bytes "VELMOJRN", u32 version, 16 bytes identity, u32 checksum of these
//   record   u8 0xA7, u8 type, u16 length, that many bytes, u32 checksum of all of these

inline constexpr std::uint32_t kJournalVersion = 1;
inline constexpr std::size_t kJournalHeaderBytes = 32;
inline constexpr std::size_t kRecordHeadBytes = 4;
inline constexpr std::size_t kRecordTailBytes = 4;
inline constexpr std::size_t kLargestPayload = 0xFFFF;
inline constexpr std::size_t kLargestRecord = kRecordHeadBytes + kLargestPayload + kRecordTailBytes;

std::array<std::byte, kJournalHeaderBytes> journalHeader(const RecordingId& id);

enum class HeaderState { good, newer, bad };
HeaderState readJournalHeader(std::span<const std::byte> bytes, RecordingId& id);

/// Appends the record to `out`. Titles and places too long for a record are cut.
void encodeRecord(const JournalRecord& record, std::vector<std::byte>& out);

enum class RecordState { good, bad, incomplete };
struct DecodedRecord {
    RecordState state = RecordState::bad;
    std::size_t bytes = 0;               ///< it takes in the journal; when good
    std::optional<JournalRecord> record; ///< absent when good but of a type that is not known
};
/// The record at the beginning of `bytes`.
DecodedRecord decodeRecord(std::span<const std::byte> bytes);

} // namespace velmo::internal
