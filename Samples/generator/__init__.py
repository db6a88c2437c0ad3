"""What the sample markers are made with: drafting, layout and the writer of marker files."""
