! An independent opinion on number fields, for the tests of record layouts only.
! Each line of the standard input is one question, each line of the standard output its answer:
!
!   W width edit  hexadecimal bits    the field that writing the value under the edit gives, in brackets
!   R width edit  [text]              status (0 read, 1 refused) and the bits of the value that the text reads as
!
! The value is a 32-bit integer under an I edit, else a 64-bit real. Blanks in an input field are null (BN).
program number_fields
  use iso_fortran_env, only: int32, int64, real64
  implicit none
  character(len=700) :: line
  character(len=24) :: edit
  character(len=300) :: text
  character(len=1) :: question
  integer :: width, status
  integer(int32) :: whole
  integer(int64) :: bits
  real(real64) :: value

  do
    read (*, '(A)', iostat=status) line
    if (status /= 0) exit
    read (line, '(A1,1X,I3,1X,A24)') question, width, edit
    if (question == 'W') then
      read (line(32:47), '(Z16)') bits
      text = ' '
      if (index(edit, 'I') > 0) then
        whole = int(bits, int32)
        write (text(1:width), '('//trim(edit)//')', iostat=status) whole
      else
        value = transfer(bits, value)
        write (text(1:width), '('//trim(edit)//')', iostat=status) value
      end if
      if (status /= 0) text(1:width) = repeat('?', width)
      write (*, '(3A)') '[', text(1:width), ']'
    else
      text = line(33:32 + width)
      bits = 0
      if (index(edit, 'I') > 0) then
        whole = 0
        read (text(1:width), '(BN,'//trim(edit)//')', iostat=status) whole
        bits = whole
      else
        value = 0
        read (text(1:width), '(BN,'//trim(edit)//')', iostat=status) value
        bits = transfer(value, bits)
      end if
      write (*, '(I1,1X,Z16.16)') merge(0, 1, status == 0), bits
    end if
  end do
end program number_fields
