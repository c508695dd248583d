// SPDX-License-Identifier: MIT
// Carries the headers of Qt that most tests include: they are compiled once for all of them.
