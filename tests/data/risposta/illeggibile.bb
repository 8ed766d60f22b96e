[b]Your snapshot 08-user.BIN[/b] could not be read: not a snapshot, or cut off: its table or a member runs past the end of the file.

Please run the check again and send the snapshot file it writes, attached as it is.
