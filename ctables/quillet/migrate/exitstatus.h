// The exit statuses of quillet-migrate, as its manual page tells them.
#ifndef QUILLET_MIGRATE_EXITSTATUS_H
#define QUILLET_MIGRATE_EXITSTATUS_H

namespace quillet::migrate {

/// All went well.
inline constexpr int kSuccessStatus = 0;
/// Something of the source needs a person.
inline constexpr int kNeedsPersonStatus = 1;
/// Something could not be read or written, or the command line was wrong.
inline constexpr int kTroubleStatus = 2;
/// The run was stopped by a signal.
inline constexpr int kInterruptedStatus = 130;

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_EXITSTATUS_H
