[playlist]
File1=a.mp3
Title1=A - B
Length1=7
file2=D:\x.wma
FILE3=..\y.wav
File=x=y.mp3
file.mp3
NumberOfEntries=2
Version=2
