#pragma once

// Of the document that jobx json prints: higher when a member gets another meaning or is removed. With --legacy the
// document has version 1 of the schema, without this member.
inline constexpr int kSchemaVersion = 2;
