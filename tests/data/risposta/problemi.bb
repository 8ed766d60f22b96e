[b]Your snapshot 08-user.BIN[/b], made 2026-11-20 14:03:05 (UTC+01:00): 1 problem to fix, 1 warning.
[list]
[*][b]Problem:[/b] The editor folder holds no tomb4.exe
[code]editor_folder: C:\Users\José\my_`levels`\Trle[/code]
[b]What to do:[/b] Reinstall the level editor: tomb4.exe is not in C:\Users\José\my_`levels`\Trle.
[*][b]Warning:[/b] The archive folder's path is 250 characters long
[code]path: C:\LLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLL
length: 250[/code]
[b]What to do:[/b] Move the archive to a shorter path, such as C:\TRLE [*].
[/list]
