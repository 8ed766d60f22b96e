// Fixed-record encoding shared by the level data formats.
