"""What the program files for Windows need and bring along."""
