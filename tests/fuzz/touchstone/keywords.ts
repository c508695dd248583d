! SPDX-License-Identifier: MIT
[Version] 2.0
# Hz Y MA
[Number of Ports] 2
[Two-Port Data Order] 21_12
[Number of Frequencies] 2
[Number of Noise Frequencies] 1
[Reference] 50
 75 ! ohm
[Matrix Format] Lower
[Begin Information]
x
[End Information]
[Network Data]
1 0.02 0 0.01 180
0.03 5
2 0.02 1 0.01 180 0.03 6
[Noise Data]
1 2 0.5 10 0.4
[End]
