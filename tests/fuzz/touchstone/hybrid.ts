! SPDX-License-Identifier: MIT
[Version] 2.1
# kHz H RI R 10
[Number of Ports] 2
[Two-Port Order] 12_21
[Number of Frequencies] 1
[Matrix Format] Full
[Network Data]
0 10 0 1 0 -1 0 0 0
[End]