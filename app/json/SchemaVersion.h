#pragma once

// Of the document that jobx json prints: higher when a member gets another meaning or is removed. With --legacy the
// document is that of version 1 and has no such member.
inline constexpr int kSchemaVersion = 2;
