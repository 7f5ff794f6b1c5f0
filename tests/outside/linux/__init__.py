"""The built program on a Linux desktop, worked as a user and the system work it."""
