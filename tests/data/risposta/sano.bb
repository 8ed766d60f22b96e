[b]Your snapshot 08-user.BIN[/b] (it does not record when it was made): the check found nothing wrong.
