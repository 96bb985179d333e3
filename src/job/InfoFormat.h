// The keys of the job's information file.
#pragma once

namespace info_format
{
inline constexpr char kInfo[] = "info"; // the file

inline constexpr char kJobName[] = "JOB_NAME";
inline constexpr char kOdbVersionMajor[] = "ODB_VERSION_MAJOR";
inline constexpr char kOdbVersionMinor[] = "ODB_VERSION_MINOR";
inline constexpr char kOdbSource[] = "ODB_SOURCE";
inline constexpr char kCreationDate[] = "CREATION_DATE";
inline constexpr char kSaveDate[] = "SAVE_DATE";
inline constexpr char kSaveApp[] = "SAVE_APP";
inline constexpr char kSaveUser[] = "SAVE_USER";
inline constexpr char kMaxUid[] = "MAX_UID"; // the largest unique number of the job
} // namespace info_format
